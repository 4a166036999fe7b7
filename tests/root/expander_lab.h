// Single expanders of the root, called by hand.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>

#include "eval/strategy.h"
#include "root/expanders.h"
#include "root/root_lab.h"

namespace root_lab {

using korvu::Classe;
using korvu::Peca;
using korvu::Xeque;
using enum korvu::Classe;
inline constexpr Xeque with_check = Xeque::ch, without = Xeque::sh;

inline void at_depth_1(std::string_view fen) {
  at_root(fen);
  korvu::deep = korvu::DEEP = 1;
  korvu::SCANT = 1;  // so that moves are reported
}

// Serves all ratings to one expander on one square.
template <Cor root>
void expand(Classe k, Xeque x, Peca p, std::string_view square) {
  const auto s = static_cast<int>(tree_lab::square_of<root>(square));
  for (korvu::ataque = 100; korvu::ataque >= -100; --korvu::ataque)
    korvu::analise100<root>({k, x, p}, s / 8, s % 8);
}

// Both check classes.
template <Cor root>
void expand(Classe k, Peca p, std::string_view square) {
  expand<root>(k, with_check, p, square);
  expand<root>(k, without, p, square);
}

// Have these moves been reported, and no others? Told as for White.
template <Cor root>
void expect_moves(std::initializer_list<std::string_view> moves) {
  EXPECT_EQ(reports().size(), moves.size()) << reported_moves();
  for (const std::string_view m : moves)
    EXPECT_NE(reported_moves().find(written<root>(m)), std::string::npos)
        << m << " is not among " << reported_moves();
}

}  // namespace root_lab
