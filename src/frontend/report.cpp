#include "frontend/report.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <ostream>
#include <string_view>

#include "board/state.h"
#include "eval/knobs.h"
#include "frontend/position.h"
#include "memory/ply_tables.h"
#include "tree/clock.h"

namespace korvu {
namespace {

struct Mate {
  float score;
  std::string_view texto;
};
// A score is a mate when it equals one of these exactly. The winning side is one step shorter.
// clang-format off
constexpr Mate mates[] = {
    {15400, "info score mate 1 "}, {-15400, "info score mate -1 "},
    {14300, "info score mate 1 "}, {-14300, "info score mate -2 "},
    {13200, "info score mate 2 "}, {-13200, "info score mate -3 "},
    {12100, "info score mate 3 "}, {-12100, "info score mate -4 "},
    {11000, "info score mate 4 "}, {-11000, "info score mate -5 "},
    {9900,  "info score mate 5 "}, {-9900,  "info score mate -6 "},
    {8800,  "info score mate 6 "}, {-8800,  "info score mate -7 "},
    {7700,  "info score mate 7 "}, {-7700,  "info score mate -8 "},
    {6600,  "info score mate 8 "}, {-6600,  "info score mate -9 "},
    {5500,  "info score mate 9 "}, {-5500,  "info score mate -10 "},
    {4400,  "info score mate 10 "}, {-4400, "info score mate -11 "},
    {3300,  "info score mate 11 "}, {-3300, "info score mate -12 "},
};
// clang-format on

std::optional<std::string_view> como_mate(float score) {
  for (const Mate& m : mates)
    if (m.score == score) return m.texto;
  return std::nullopt;
}

// Shown while the draw value stands as it was at the start of the search.
int deslocamento() {
  const int tamanho = emp == emppp ? 100 : 0;
  return deep % 2 == 0 ? -tamanho : tamanho;
}

float em_centesimos(float score) {
  return 10 * score;
}

// Cut toward zero; a score that is no number shows as 0.
int centesimos(float score) {
  const float v = em_centesimos(score);
  return (std::isfinite(v) && std::abs(v) < 2e9F ? static_cast<int>(v) : 0) + deslocamento();
}

int por_mil_cheio() {
  const auto registros = [](std::uint8_t cheia, const TabelaDeLance& t) {
    return cheia ? registros_por_tabela : t.indice();
  };
  return (registros(FULL3, tabela_de<3, Cor::b>()) + registros(FULL4, tabela_de<4, Cor::p>()) +
          registros(FULL5, tabela_de<5, Cor::b>())) /
         30;
}

std::ostream& operator<<(std::ostream& os, const Texto& t) {
  return os << t.A << t.B << t.C << t.D;
}

// The score of a line, or nothing when the option hides lines that lose material.
bool escreve_score(std::ostream& os) {
  if (const auto mate = como_mate(beta1)) {
    os << *mate;
    return true;
  }
  const float v = em_centesimos(beta1) + static_cast<float>(deslocamento());
  if (!FULL_inf && !(v >= 10 * materialflot0 - 150)) return false;
  os << "info score cp " << centesimos(beta1);
  return true;
}

void escreve_resto(std::ostream& os, int t) {
  os << " depth " << deep + 1 << " seldepth " << ddep + 1 << " currmove " << linha[0]
     << " currmovenumber " << curr << " nodes " << nodes << " time " << t;
  if (HASHf) os << " hashfull " << por_mil_cheio();
  os << " pv";
  for (const Texto& lance : linha) os << ' ' << lance;
  os << std::endl;
}

}  // namespace

void info() {
  std::ostream& os = *saida;
  if (!EXTRA_EVAL) dddep = deep;
  if (const auto mate = como_mate(EP))
    os << *mate;
  else if (deep >= 0 && deep <= 23)
    os << "info score cp " << centesimos(EP);
  else
    return;
  os << " depth " << dddep + 1 << " nodes " << nodes << " pv " << jogada_texto << std::endl;
}

void info_deept() {
  std::ostream& os = *saida;
  if (!EXTRA_EVAL) ddep = deep;
  const int t = std::max(decorrido(), 0);  // a clock that went back tells no time
  if (escreve_score(os)) escreve_resto(os, t);
  if (t != 0) os << "info nps " << nodes / static_cast<std::uint32_t>(t) * 1000 << std::endl;
  dddep = std::max(dddep, ddep);
}

void convert_0000_to_a1a2() {
  if (PR != '0' && PR != 'q') return;
  const auto letra = [](char& onde, int v, char primeira) {
    if (v >= 0 && v <= 7) onde = static_cast<char>(primeira + v);
  };
  letra(jogada_texto.A, jogada.a, 'a');
  letra(jogada_texto.B, jogada.b, '1');
  letra(jogada_texto.C, jogada.c, 'a');
  letra(jogada_texto.D, jogada.d, '1');
  out = "bestmove ";
  out += {jogada_texto.A, jogada_texto.B, jogada_texto.C, jogada_texto.D};
  if (PR == 'q') out += 'q';
  avanca_colunas(PR == 'q' ? 6 : 5);
  PR = PRs = '0';
}

}  // namespace korvu
