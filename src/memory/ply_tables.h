// The tables of plies 3 to 5: values of positions met in this search, in the order they came.
//
// Not a hash table, whatever the names say: a ring of records found by a scan from the first to the
// last, with the exact bounds, depth and board. Castling and en-passant rights are left out on
// purpose: two positions that differ only there are one position here.
#pragma once

#include <algorithm>

#include "board/state.h"

namespace korvu {

inline constexpr int registros_por_tabela = 10000;

inline std::uint8_t HASHf = 1;  // the tables are in use; cleared during reduced and null searches
inline std::uint8_t HASHTABLE3 = 0, HASHTABLE4 = 0, HASHTABLE5 = 0;  // the last scan was a hit
inline std::uint8_t FULL3 = 0, FULL4 = 0, FULL5 = 0;  // a table of the ply has wrapped

// The part of a record that is compared before the board.
struct ChaveDeBusca {
  std::uint8_t PVSm, PVSm2;
  float inferior, superior, deep;
  friend bool operator==(const ChaveDeBusca&, const ChaveDeBusca&) = default;
};

// One table. Parallel arrays, so that a scan reads a byte of most records, the key of few and the
// board of hardly any but the right one.
class TabelaDeLance {
 public:
  // Value of the lowest record with this key and the board of tab2, or nullptr.
  const float* procura(const ChaveDeBusca& chave) const;
  // Writes key and board of tab2 at the present index; the value stays what it was.
  void abre(const ChaveDeBusca& chave);
  // Writes the value at the present index and steps on; true when the ring has wrapped. The last
  // record is never written: the ring has one less than the table.
  bool fecha(float valor);
  void limpa() { inc = usados = 0; }
  int indice() const { return inc; }

 private:
  int inc = 0;     // index of the record being written
  int usados = 0;  // records written since the last reset; those above match nothing
  std::array<std::uint8_t, registros_por_tabela> digitais{};
  std::array<ChaveDeBusca, registros_por_tabela> chaves{};
  std::array<float, registros_por_tabela> valores{};
  std::array<Tabuleiro, registros_por_tabela> tabuleiros{};
};

// The table of the node at ply N (3 to 5) that is entered after a move of `cor`: hashtable3b ...
// 5p.
template <int N, Cor cor>
TabelaDeLance& tabela_de() {
  static_assert(N >= 3 && N <= 5, "only plies 3 to 5 have tables");
  static TabelaDeLance t;
  return t;
}

template <int N>
std::uint8_t& HASHTABLE() {
  return N == 3 ? HASHTABLE3 : N == 4 ? HASHTABLE4 : HASHTABLE5;
}
template <int N>
std::uint8_t& FULL() {
  return N == 3 ? FULL3 : N == 4 ? FULL4 : FULL5;
}

// The bounds under which the node at ply N is searched now.
template <int N>
ChaveDeBusca chave_atual() {
  const float raiz = std::max(alfa[2], alfa0);
  return {PVSm, PVSm2, N == 5 ? std::max(alfa[4], raiz) : raiz,
          N == 3 ? beta1 : std::min(beta[3], beta1), static_cast<float>(deep)};
}

// hash_table_scan3b ...: on a hit sets HASHTABLEN and writes the record's value to the ply's slot.
template <int N, Cor cor>
void hash_table_scan() {
  if (const float* v = tabela_de<N, cor>().procura(chave_atual<N>())) {
    HASHTABLE<N>() = 1;
    (N % 2 == 0 ? alfa : beta)[N] = *v;
  }
}

// hash_table_build3b ...: opens a record for the position on tab2.
template <int N, Cor cor>
void hash_table_build() {
  tabela_de<N, cor>().abre(chave_atual<N>());
}

// Closes the open record with the node's value.
template <int N, Cor cor>
void hash_table_valor() {
  if (tabela_de<N, cor>().fecha((N % 2 == 0 ? alfa : beta)[N])) FULL<N>() = 1;
}

// Puts the three tables of the searches with this root colour back to their start state.
template <Cor raiz>
void limpa_tabelas() {
  tabela_de<3, raiz>().limpa();
  tabela_de<4, outra(raiz)>().limpa();
  tabela_de<5, raiz>().limpa();
}

}  // namespace korvu
