#include "board/root_move.h"

#include "board/move.h"
#include "board/root_tables.h"

namespace korvu {
namespace {

// --- The square value of a root move ---

// Small endings in which a king is sent after the enemy's lead pawn: enemy's total, and his number
// of men where that is asked (0: any).
struct Final {
  int total, homens;
};
// clang-format off
constexpr Final finais_de_caca_ao_peao[] = {
    {120, 0}, {130, 0}, {140, 0}, {150, 0},  // pawns only
    {153, 0}, {163, 0}, {173, 4}, {183, 5},  // a bishop and pawns
    {186, 0}, {196, 4}, {206, 5}, {216, 6},  // two bishops and pawns
    {152, 0}, {162, 0}, {172, 4}, {182, 5},  // a knight and pawns
    {184, 0}, {194, 4}, {204, 5}, {214, 6},  // two knights and pawns
    {185, 0}, {195, 4}, {205, 5}, {215, 6},  // bishop, knight and pawns
    {170, 2}, {180, 3},                      // a rook and pawns
};
// Endings in which the enemy has no pawn left and the king goes to its own lead pawn.
constexpr Final finais_sem_peao_inimigo[] = {
    {142, 1}, {143, 1}, {174, 2}, {175, 2}, {176, 2}, {160, 1},
};
// clang-format on

template <std::size_t n>
bool consta(const Final (&lista)[n], float total, int homens) {
  for (const Final& f : lista)
    if (total == static_cast<float>(f.total) && (f.homens == 0 || homens == f.homens)) return true;
  return false;
}

template <Cor cor>
int matriz_do_rei(std::size_t t) {
  constexpr Cor outro = outra(cor);
  const float inimigo = material_da_raiz<outro>();
  const float proprio = material_da_raiz<cor>();
  const int homens = npecas<outro>();
  const int caca = XP<outro>()[t];
  int valor = 0;
  if (inimigo != 110 && proprio == 110) valor = caca + posix<cor>.reifinal[t];
  if (inimigo == 110) {
    valor = XP<cor>()[t] + Xr<outro>()[t];
    if (proprio == 110) valor = caca + posix<cor>.reifinal[t];
  }
  if (consta(finais_de_caca_ao_peao, inimigo, homens)) valor = caca;
  if (proprio != 110 && consta(finais_sem_peao_inimigo, inimigo, homens)) valor = XP<cor>()[t] / 5;
  return valor;
}

template <Cor cor>
void mede_matriz(std::uint8_t codigo, std::size_t t) {
  using L = Lado<cor>;
  const int perto = Xr<outra(cor)>()[t];
  MATRIZ = 0;
  incentiva_promo = 0;
  switch (codigo) {
    case L::bispo:
      MATRIZ = perto + posix<cor>.bispo[t];
      break;
    case L::cavalo:
      MATRIZ = perto + posix<cor>.cavalo[t];
      break;
    case L::torre:
      MATRIZ = perto + posix<cor>.torre[t];
      break;
    case L::dama:
      MATRIZ = perto + posix<cor>.dama[t];
      break;
    case L::rei:
      MATRIZ = matriz_do_rei<cor>(t);
      break;
    case L::peao:
      incentiva_promo = nb >= 70;
      MATRIZ = (nb < 30   ? posix<cor>.peao_inici
                : nb < 70 ? posix<cor>.peao_medio
                          : posix<cor>.peao_final)[t];
      break;
    default:
      break;
  }
}

// --- Attack tables ---

template <Cor cor, Peca p>
void anota_ataques(int x, int y) {
  Ataques& at = ataca<cor>();
  const auto anota = [&](int i, int j) {
    ++at.por_peca[static_cast<std::size_t>(p)][casa(i, j)];
    ++at.N_A[casa(i, j)];
    return false;
  };
  if constexpr (p == Peca::peao) {
    for (const int i : {x + 1, x - 1})
      if (dentro(i, y + Lado<cor>::frente)) anota(i, y + Lado<cor>::frente);
  } else {
    alvos<p>(tab2, x, y, anota);
  }
}

void preenche_ataques() {
  ataca_b = {};
  ataca_p = {};
  percorre_tabuleiro([](int x, int y, std::size_t s) {
    com_a_peca<Cor::b>(tab2[s], [=]<Peca p>() { anota_ataques<Cor::b, p>(x, y); });
    com_a_peca<Cor::p>(tab2[s], [=]<Peca p>() { anota_ataques<Cor::p, p>(x, y); });
    return false;
  });
}

}  // namespace

void admite_na_varredura(const Lance& lance) {
  TEST1IID = 1;
  if (SCAN1 && lance != melhor) TEST1IID = 0;
  if (SCANT && lance == melhor) TEST1IID = 0;
}

template <Cor cor>
void init_tabuleiro2(int x1, int y1, int x2, int y2) {
  admite_na_varredura({x1, y1, x2, y2});
  mede_matriz<cor>(tab[casa(x1, y1)], casa(x2, y2));
  tab2 = tab;
  move_as_pecas<cor>(tab2, duplos, x1, y1, x2, y2);
  preenche_ataques();
}

template void init_tabuleiro2<Cor::b>(int, int, int, int);
template void init_tabuleiro2<Cor::p>(int, int, int, int);

}  // namespace korvu
