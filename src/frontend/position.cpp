#include "frontend/position.h"

#include <optional>
#include <string_view>

#include "board/draw.h"
#include "board/move.h"
#include "eval/knobs.h"
#include "eval/root_analysis.h"
#include "frontend/line.h"
#include "memory/ply_tables.h"
#include "root/caps.h"
#include "root/driver.h"
#include "root/first_ply.h"
#include "tree/clock.h"
#include "tree/knobs.h"

namespace korvu {
namespace {

// Columns of the next move's four letters.
int o = 24, p = 25, q = 26, r = 27;

std::uint8_t MOVESfen = 0;  // the FEN line has a move list

void poe_colunas(int primeira) {
  o = primeira;
  p = primeira + 1;
  q = primeira + 2;
  r = primeira + 3;
}

int coluna_em(int k) {
  return coluna(static_cast<std::size_t>(k));
}

// --- Start of a game ---

void poe_posicao_inicial() {
  constexpr std::array<Peca, 8> fundo = {Peca::torre, Peca::cavalo, Peca::bispo,  Peca::dama,
                                         Peca::rei,   Peca::bispo,  Peca::cavalo, Peca::torre};
  tab.fill(vazia);
  for (int x = 0; x < 8; ++x) {
    tab[casa(x, 0)] = codigo_de(fundo[static_cast<std::size_t>(x)], Cor::b);
    tab[casa(x, 1)] = Lado<Cor::b>::peao;
    tab[casa(x, 6)] = Lado<Cor::p>::peao;
    tab[casa(x, 7)] = codigo_de(fundo[static_cast<std::size_t>(x)], Cor::p);
  }
  jm = {};
}

// What every position line resets.
void zera_comum() {
  inicio = relogio();
  IIDS = pempatee = 1;
  FULL3 = FULL4 = FULL5 = Y = 0;
  EP = 0;
  curr = DEEP = dddep = peca = 0;
  roque_b = roque_p = 0;
  deeppromo = 0;
  duplos = {};
  SEARCH_E = SEARCH_EE;
  E = sem_melhor;
  alfa0 = ALFA0 = -infinito;
  nb = 1;
  poe_colunas(24);
  PR = PRs = PRe = '0';
  esquece_lances();
  for (Tabuleiro& t : tabr1) t.fill(1);  // no man has this code
}

// What the first two plies reset besides, since they are searched without a preparation.
void zera_inicio(Cor raiz) {
  DEEP9 = 0;
  EXTRA_EVAL = 1;
  tempo = 180000;
  joga_c_fen = 0;
  poe_posicao_inicial();
  joga_com_b = raiz == Cor::b;
  nodes = 0;
  materialflot0 = 0;
  materialpa = materialba = 510;
  materialmaiorb = materialmaiorp = 320;
  npecasb = npecasp = 15;
  npecasbdp = npecaspdp = 7;
  emp = emppp = empp - 10;
  SCAN1 = 0;
  SCANT = 1;
  caps_de_mate();
  if (HASHf) por_cor(raiz == Cor::b, []<Cor cor>() { limpa_tabelas<cor>(); });
}

// --- Replay ---

bool letra_de_promocao(int letra) {
  return letra == 'q' || letra == 'b' || letra == 'r' || letra == 'n';
}

void le_letra(int coluna_da_letra, char& texto, int& numero, char primeira) {
  const int letra = coluna_em(coluna_da_letra);
  texto = static_cast<char>(letra);
  if (letra >= primeira && letra < primeira + 8) numero = letra - primeira;
}

// Reads the move at the columns o to r into a to d and steps behind it.
void le_lance(bool promocao_na_linha) {
  le_letra(o, jogada_texto.A, jogada.a, 'a');
  le_letra(p, jogada_texto.B, jogada.b, '1');
  le_letra(q, jogada_texto.C, jogada.c, 'a');
  le_letra(r, jogada_texto.D, jogada.d, '1');
  if (promocao_na_linha) PRe = static_cast<char>(coluna_em(r + 1));
  avanca_colunas(promocao_na_linha ? 6 : 5);
}

constexpr int ultimo_lance_da_linha = 99999;

// Plays the moves from the columns o to r on. What follows a move tells whether it promotes and
// whether another one comes.
void repete_lances() {
  for (;;) {
    const int depois = coluna_em(r + 1), alem = coluna_em(r + 2);
    const bool PROMO = letra_de_promocao(depois) && (alem == ' ' || alem == '\0');
    const bool outro_segue = PROMO ? alem == ' ' : depois == ' ';
    le_lance(PROMO);
    peca = com_sinal(tab[casa(jogada.c, jogada.d)]);
    init_tabuleiro();
    guarda_posicao_do_jogo();
    if (!outro_segue || ++nb > ultimo_lance_da_linha) return;
  }
}

// --- FEN ---

constexpr int coluna_do_fen = 13;

bool acabou(int letra) {
  return letra == '\0' || letra == alem_da_linha;
}

std::optional<std::uint8_t> codigo_da_letra(int letra) {
  constexpr std::string_view brancas = "PNBRQK", pretas = "pnbrqk";
  if (const auto i = brancas.find(static_cast<char>(letra)); i != std::string_view::npos)
    return codigo_de(todas_as_pecas[i], Cor::b);
  if (const auto i = pretas.find(static_cast<char>(letra)); i != std::string_view::npos)
    return codigo_de(todas_as_pecas[i], Cor::p);
  return std::nullopt;
}

// Reads one rank from column k up to its closing character; gives the column of that character, or
// of the line's end. Entries beyond the eighth file are dropped.
int le_fila(int k, int y, int fecho) {
  int x = 0;
  const auto poe = [&](std::uint8_t codigo) {
    if (x < 8) tab[casa(x, y)] = codigo;
    ++x;
  };
  for (;; ++k) {
    const int letra = coluna_em(k);
    if (letra == fecho || acabou(letra)) return k;
    if (letra >= '1' && letra <= '8')
      for (int n = letra - '0'; n > 0; --n) poe(vazia);
    else if (const auto codigo = codigo_da_letra(letra))
      poe(*codigo);
  }
}

// Reads the board; gives the column of the blank behind it, or of the line's end.
int le_tabuleiro() {
  int k = coluna_do_fen;
  for (int y = 7; y >= 0; --y) {
    k = le_fila(k, y, y > 0 ? '/' : ' ');
    if (acabou(coluna_em(k))) return k;
    if (y > 0) ++k;
  }
  return k;
}

void le_direito(int letra) {
  switch (letra) {
    case 'K':
      jm.R_b_jm = jm.T_b_h_jm = 0;
      break;
    case 'Q':
      jm.R_b_jm = jm.T_b_a_jm = 0;
      break;
    case 'k':
      jm.R_p_jm = jm.T_p_h_jm = 0;
      break;
    case 'q':
      jm.R_p_jm = jm.T_p_a_jm = 0;
      break;
    default:
      break;
  }
}

// Reads the castling field behind the board that ends at column s; gives the column behind it. With
// CHESS_960 a FEN never allows the engine to castle.
int le_roques(int s) {
  for (int k = s + 3; k <= s + 7; ++k) {
    const int letra = coluna_em(k);
    if (letra == ' ') return k + 1;
    if (letra == '-') return k + 2;
    if (!CHESS_960) le_direito(letra);
  }
  return s + 8;
}

void le_passagem(int k) {
  const int letra = coluna_em(k), fila = coluna_em(k + 1);
  if (letra < 'a' || letra > 'h') return;
  const auto x = static_cast<std::size_t>(letra - 'a');
  if (fila == '3') duplos.pb[x] = 1;
  if (fila == '6') duplos.pp[x] = 1;
}

// Looks for the word "moves" behind the board that ends at column s, not too far.
std::optional<int> acha_lances(int s) {
  for (int k = s + 1; k <= s + 30; ++k) {
    if (acabou(coluna_em(k))) return std::nullopt;
    if (coluna_em(k) == 'm' && coluna_em(k + 1) == 'o') return k;
  }
  return std::nullopt;
}

}  // namespace

void avanca_colunas(int n) {
  poe_colunas(o + n);
}

void zera_jogo(Caminho caminho) {
  zera_comum();
  switch (caminho) {
    case Caminho::primeiro_lance:
      zera_inicio(Cor::b);
      break;
    case Caminho::um_lance:
      zera_inicio(Cor::p);
      break;
    case Caminho::lista_ou_fen:
      emp = empp;
      break;
  }
}

void recebe_um_lance() {
  le_lance(false);
  init_tabuleiro();
}

void recebe_lista() {
  poe_posicao_inicial();
  repete_lances();
}

void recebe_fen() {
  jm = {1, 1, 1, 1, 1, 1};
  joga_c_fen = 1;
  const int s = le_tabuleiro();
  const int lado = coluna_em(s + 1);
  if (lado == 'w') joga_com_b = 1;
  if (lado == 'b') joga_com_b = 0;
  le_passagem(le_roques(s));
  const auto m = acha_lances(s);
  MOVESfen = m.has_value();
  if (!m) return;
  poe_colunas(*m + 6);
  repete_lances();
}

bool brancas_jogam() {
  const bool par_de_lances = nb % 2 == 0;
  if (!joga_c_fen) return par_de_lances;
  if (!MOVESfen || par_de_lances) return joga_com_b;
  return !joga_com_b;
}

}  // namespace korvu
