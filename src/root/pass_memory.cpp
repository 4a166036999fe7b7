#include "root/pass_memory.h"

#include "eval/strategy.h"

namespace korvu {

bool MemoriaDoPasse::dispensa(const Lance& l) const {
  if (!ativa_) return false;
  const Nota& n = notas_[indice(l)];
  return n.conhecida && (n.ilegal || n.estrategia != ataque);
}

void MemoriaDoPasse::encontrou(const Lance& l) {
  if (expansor_ == nullptr) return;
  const Nota& n = notas_[indice(l)];
  expansor_->ultimo = l;
  if (!n.ilegal) expansor_->notas.set(static_cast<std::size_t>(n.estrategia + 100));
}

void MemoriaDoPasse::anota(const Lance& l) {
  em_dia_com(l);
  if (!ativa_) return;
  notas_[indice(l)] = {static_cast<std::int16_t>(ESTRATEGIA), true, Y != 0};
  encontrou(l);
}

void MemoriaDoPasse::adia(const Lance& l) {
  ultimo_ = l;
  pendente_ = true;
  roque_pendente_ = false;
  encontrou(l);
}

bool MemoriaDoPasse::dispensa_expansor(const Expansor& e) {
  const DoExpansor& d = expansores_[indice(e)];
  const bool pode_rocar = e.peca == Peca::rei && e.classe == Classe::positive1;
  if (!ativa_ || !d.completo || pode_rocar) return false;
  if (d.notas.test(static_cast<std::size_t>(ataque + 100))) return false;
  if (d.ultimo != sem_lance) adia(d.ultimo);
  return true;
}

void MemoriaDoPasse::comeca_expansor(const Expansor& e) {
  if (ativa_) expansor_ = &expansores_[indice(e)];
}

void MemoriaDoPasse::acaba_expansor() {
  if (expansor_ != nullptr) expansor_->completo = true;
  expansor_ = nullptr;
}

NotaDoRoque& MemoriaDoPasse::nota_do_roque(Ala testada) {
  if (antes_dos_roques_ != ultimo_) roques_ = {};
  antes_dos_roques_ = ultimo_;
  return roques_[static_cast<std::size_t>(testada)];
}

}  // namespace korvu
