#include "frontend/dialogue.h"

#include <istream>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

#include "board/state.h"
#include "eval/root_analysis.h"
#include "frontend/book.h"
#include "frontend/go.h"
#include "frontend/line.h"
#include "frontend/options.h"
#include "frontend/position.h"
#include "frontend/report.h"
#include "memory/game_memory.h"
#include "root/driver.h"
#include "root/first_ply.h"
#include "root/ladder.h"
#include "tree/clock.h"

namespace korvu {
namespace {

// Where the flow goes from a position line or from the wait for one.
enum class Rumo { topo, primeiro_lance, um_lance, lista, fen, fim };

class Dialogo {
 public:
  Dialogo(std::istream& entrada, std::ostream& respostas) : entrada_(entrada), os_(respostas) {}

  void corre() {
    Rumo rumo = Rumo::topo;
    while (rumo != Rumo::fim) rumo = rumo == Rumo::topo ? topo() : atende(rumo);
  }

 private:
  bool le() { return static_cast<bool>(std::getline(entrada_, in)); }

  Rumo topo();
  Rumo atende(Rumo posicao);
  Rumo convert_a1a2_to_0000();

  void identifica();
  void primeiro_lance();
  void um_lance();
  void lista_ou_fen(Rumo posicao);
  bool livro_responde();
  void espera_go();
  template <Cor raiz>
  void joga();
  template <Cor raiz>
  void busca();
  template <Cor raiz>
  void varredura_curta();
  void responde(std::string_view lance) { os_ << "bestmove " << lance << std::endl; }
  void encerra();

  std::istream& entrada_;
  std::ostream& os_;
};

// --- The readers ---

bool linha_de_primeiro_lance() {
  return in == "position startpos";
}
bool linha_de_lista() {
  return coluna(0) == 'p' && coluna(9) == 's' && coluna(18) == 'm';
}
bool linha_de_fen() {
  return coluna(0) == 'p' && coluna(5) == 'i' && coluna(9) == 'f';
}

constexpr std::size_t fim_de_um_lance = 28;  // length of a one-move line

Rumo Dialogo::topo() {
  if (!le()) return Rumo::fim;
  if (in == "uci") identifica();
  aplica_opcoes();
  if (in == "isready") os_ << "readyok" << std::endl;
  if (in == "quit") return Rumo::fim;
  if (linha_de_primeiro_lance()) return Rumo::primeiro_lance;
  if (linha_de_lista() && coluna(fim_de_um_lance) != alem_da_linha)
    return coluna(fim_de_um_lance) == '\0' ? Rumo::um_lance : Rumo::lista;
  if (linha_de_fen()) return Rumo::fen;
  return Rumo::topo;
}

// The wait for the next position, after every bestmove. Despite its name it converts nothing. A
// line shorter than one move counts as a list here, while the top loop drops it.
Rumo Dialogo::convert_a1a2_to_0000() {
  deep = deepp;
  joga_c_fen = 0;
  while (le()) {
    if (linha_de_primeiro_lance()) return Rumo::primeiro_lance;
    if (linha_de_lista()) return coluna(fim_de_um_lance) == '\0' ? Rumo::um_lance : Rumo::lista;
    if (linha_de_fen()) return Rumo::fen;
    if (in == "isready") os_ << "readyok" << std::endl;
    if (in == "quit") return Rumo::fim;
    aplica_opcoes();
  }
  return Rumo::topo;
}

// The wait for the go line; the end of input counts as one without a clock.
void Dialogo::espera_go() {
  while (le())
    if (coluna(0) == 'g' && coluna(1) == 'o') {
      le_relogio();
      return;
    }
}

void Dialogo::identifica() {
  os_ << "id name Korvu 29.0 64bit" << std::endl << "id author Tibor Lensk" << std::endl;
  if (HASH1) limpa_memoria();
  for (const Opcao& o : opcoes()) os_ << linha_da_opcao(o) << std::endl;
  os_ << "uciok" << std::endl;
}

// --- The answers to the kinds of position lines ---

Rumo Dialogo::atende(Rumo posicao) {
  switch (posicao) {
    case Rumo::primeiro_lance:
      primeiro_lance();
      break;
    case Rumo::um_lance:
      um_lance();
      break;
    default:
      lista_ou_fen(posicao);
      break;
  }
  return convert_a1a2_to_0000();
}

void Dialogo::primeiro_lance() {
  zera_jogo(Caminho::primeiro_lance);
  if (OwnBook)
    responde(primeiro_lance_do_livro);
  else
    varredura_curta<Cor::b>();
}

// With the book on, a first move outside it gets no answer at all.
void Dialogo::um_lance() {
  zera_jogo(Caminho::um_lance);
  recebe_um_lance();
  if (!OwnBook)
    varredura_curta<Cor::p>();
  else if (const auto lance = procura_no_livro(livro_de_um_lance()))
    responde(*lance);
}

void Dialogo::lista_ou_fen(Rumo posicao) {
  zera_jogo(Caminho::lista_ou_fen);
  if (posicao == Rumo::fen)
    recebe_fen();
  else
    recebe_lista();
  if (posicao == Rumo::lista && livro_responde()) return;
  joga_com_b = brancas_jogam();
  pempate = 0;
  guarda_linha(in);
  por_cor(joga_com_b, [this]<Cor raiz>() { joga<raiz>(); });
}

bool Dialogo::livro_responde() {
  if (!OwnBook) return false;
  const auto lance = procura_no_livro(brancas_jogam() ? livro_b() : livro_p());
  if (lance) responde(*lance);
  return lance.has_value();
}

template <Cor raiz>
void Dialogo::joga() {
  prepara_busca<raiz>();
  espera_go();
  busca<raiz>();
  encerra();
}

// Answers from the game memory, or searches and remembers.
template <Cor raiz>
void Dialogo::busca() {
  const bool com_memoria = HASH1 && HASH_MEM;
  mem_TEST = 0;
  if (com_memoria) hash_mem_scan(tempo);
  if (!mem_TEST) procura<raiz>();
  EP = E;
  if (mem_TEST) return;
  init_tabuleiro();
  if (com_memoria) hash_mem_build(tempo);
}

// The first two plies of a game without the book: a scan of pawn and knight moves, without a go.
template <Cor raiz>
void Dialogo::varredura_curta() {
  percorre_primeiro_lance<raiz>();
  EP = E;
  init_tabuleiro();
  encerra();
}

void Dialogo::encerra() {
  convert_0000_to_a1a2();
  info();
  os_ << out << std::endl;
}

}  // namespace

void dialogo(std::istream& entrada, std::ostream& respostas) {
  saida = &respostas;
  relata_linha = info_deept;
  Dialogo(entrada, respostas).corre();
}

}  // namespace korvu
