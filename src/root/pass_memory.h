// What a pass remembers of the root moves it has rated.
//
// A ladder meets each move some 200 times, once for each rating that it serves, and the move's
// rating is the same every time. So a move is rated once a pass; when it is met again and is not
// the one to be served, it is only noted as pending: rating a move leaves its marks in many slots
// (tab2, Y, XEQUE, the own king's square, MATRIZ, the attack tables, extraevalll, pempate), and
// whoever reads them next must find those of the last move met. `poe_em_dia` makes it so.
#pragma once

#include <array>
#include <bitset>

#include "board/attack.h"
#include "board/state.h"
#include "root/expanders.h"

namespace korvu {

// The outcome of rating a castling.
struct NotaDoRoque {
  bool conhecida = false, proibido = false;  // proibido: R
  int estrategia = 0;
};

class MemoriaDoPasse {
 public:
  // Both forget everything. Outside a pass nothing is remembered, and every move is rated anew.
  void comeca() {
    *this = {};
    ativa_ = true;
  }
  void acaba() { *this = {}; }

  // --- Moves ---

  // True when the move has been rated and the rating served now is another.
  bool dispensa(const Lance& l) const;
  // The move has just been rated: notes ESTRATEGIA and Y.
  void anota(const Lance& l);
  // The move has been met and not rated again.
  void adia(const Lance& l);
  // The move whose marks are still to be made, if there is one.
  bool pendente() const { return pendente_; }
  const Lance& ultimo() const { return ultimo_; }

  // --- Whole expanders: the men of one kind, moves of one class ---

  // True when none of its moves has the rating served now; its last move is then pending.
  bool dispensa_expansor(const Expansor& e);
  void comeca_expansor(const Expansor& e);
  void acaba_expansor();

  // --- Castlings, whose rating depends on the move met before ---

  // The outcome of the test of this wing after the last move met, to be filled in when not known.
  NotaDoRoque& nota_do_roque(Ala testada);
  void adia_roque(Ala testada) {
    roque_ = testada;
    roque_pendente_ = true;
  }
  bool roque_pendente() const { return roque_pendente_; }
  Ala roque() const { return roque_; }
  void roque_em_dia() { roque_pendente_ = false; }

  bool ativa() const { return ativa_; }

 private:
  struct Nota {
    std::int16_t estrategia;
    bool conhecida, ilegal;
  };
  struct DoExpansor {
    std::bitset<201> notas;  // [r + 100]: a legal move is rated r
    Lance ultimo = sem_lance;
    bool completo = false;
  };

  static std::size_t indice(const Lance& l) { return 64 * casa(l.aa, l.bb) + casa(l.cc, l.dd); }
  static std::size_t indice(const Expansor& e) {
    return 6 * static_cast<std::size_t>(e.classe) + static_cast<std::size_t>(e.peca);
  }
  void encontrou(const Lance& l);
  void em_dia_com(const Lance& l) {
    ultimo_ = l;
    pendente_ = roque_pendente_ = false;
  }

  bool ativa_ = false, pendente_ = false, roque_pendente_ = false;
  Lance ultimo_ = sem_lance;
  Ala roque_ = {};
  DoExpansor* expansor_ = nullptr;  // the one that runs for the first time
  std::array<Nota, 64 * 64> notas_{};
  std::array<DoExpansor, 36> expansores_{};
  Lance antes_dos_roques_ = sem_lance;   // the move after which roques_ holds
  std::array<NotaDoRoque, 2> roques_{};  // by Ala
};

inline MemoriaDoPasse memoria_do_passe{};

}  // namespace korvu
