#include "eval/plain_twin.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <utility>
#include <vector>

#include "board/state.h"
#include "eval/knobs.h"

namespace plain {
namespace {

constexpr int pawn = 10, knight = 32, bishop = 33, rook = 50, queen = 90, king = 110;
constexpr std::array<int, 6> kinds = {pawn, knight, bishop, rook, queen, king};

bool on_board(int x, int y) {
  return x >= 0 && x <= 7 && y >= 0 && y <= 7;
}

// What stands on a square as `side` sees it: own men positive, 0 for empty and off the board.
int seen(const Board& b, Side side, int x, int y) {
  if (!on_board(x, y)) return 0;
  const int v = b[static_cast<std::size_t>(8 * x + y)];
  return side == white ? v : -v;
}

// One rank towards the enemy.
int forward(Side side) {
  return side == white ? 1 : -1;
}

// Rank index as the side counts it from its own back rank.
int rank_of(Side side, int y) {
  return side == white ? y : 7 - y;
}

void add(float& sum, double term) {
  const double exact = static_cast<double>(sum) + term;
  sum = static_cast<float>(exact);
}

double middle(int x, int y) {
  return (x - 3.5) * (x - 3.5) + (y - 3.5) * (y - 3.5) + 2;
}
float centro(int x, int y) {
  return static_cast<float>(1.0 / middle(x, y));
}
float centroo(int x, int y) {
  return static_cast<float>(50.0 / middle(x, y));
}
float promo(Side side, int y) {
  const int to_go = 7 - rank_of(side, y);
  return static_cast<float>(1.0 / (2 * to_go * to_go + 2));
}

struct Square {
  int x, y;
};

// The squares an officer or a king reaches, in the order in which they are summed.
std::vector<Square> reach(const Board& b, int x, int y) {
  const int kind = std::abs(seen(b, white, x, y));
  std::vector<Square> out;
  const auto step = [&](int dx, int dy) {
    if (on_board(x + dx, y + dy)) out.push_back({x + dx, y + dy});
  };
  const auto walk = [&](int dx, int dy) {
    for (int k = 1; on_board(x + k * dx, y + k * dy); ++k) {
      out.push_back({x + k * dx, y + k * dy});
      if (seen(b, white, x + k * dx, y + k * dy) != 0) return;
    }
  };
  if (kind == knight) {
    step(+2, +1);
    step(+2, -1);
    step(-2, +1);
    step(-2, -1);
    step(-1, +2);
    step(-1, -2);
    step(+1, -2);
    step(+1, +2);
  }
  if (kind == rook || kind == queen) {
    walk(+1, 0);
    walk(-1, 0);
    walk(0, +1);
    walk(0, -1);
  }
  if (kind == bishop || kind == queen) {
    walk(+1, +1);
    walk(+1, -1);
    walk(-1, -1);
    walk(-1, +1);
  }
  if (kind == king) {
    step(+1, 0);
    step(-1, 0);
    step(0, +1);
    step(0, -1);
    step(-1, -1);
    step(+1, +1);
    step(-1, +1);
    step(+1, -1);
  }
  return out;
}

// Does the man on one square attack another? Told by the geometry of the two squares alone.
bool attacks_square(const Board& b, int x1, int y1, int x2, int y2) {
  const int v = seen(b, white, x1, y1);
  const int dx = x2 - x1, dy = y2 - y1;
  const int far = std::abs(dx) > std::abs(dy) ? std::abs(dx) : std::abs(dy);
  const int near = std::abs(dx) + std::abs(dy) - far;
  if (far == 0) return false;
  const bool straight = near == 0, diagonal = near == far;
  const auto free_between = [&] {
    for (int k = 1; k < far; ++k)
      if (seen(b, white, x1 + k * (dx / far), y1 + k * (dy / far)) != 0) return false;
    return true;
  };
  switch (std::abs(v)) {
    case pawn:
      return std::abs(dx) == 1 && dy == (v > 0 ? 1 : -1);
    case knight:
      return far == 2 && near == 1;
    case bishop:
      return diagonal && free_between();
    case rook:
      return straight && free_between();
    case queen:
      return (straight || diagonal) && free_between();
    case king:
      return far == 1;
    default:
      return false;
  }
}

bool king_attacked(const Board& b, Side side) {
  for (int to = 0; to < 64; ++to) {
    if (seen(b, side, to / 8, to % 8) != king) continue;
    for (int from = 0; from < 64; ++from)
      if (seen(b, side, from / 8, from % 8) < 0 &&
          attacks_square(b, from / 8, from % 8, to / 8, to % 8))
        return true;
  }
  return false;
}

class Scan {
 public:
  Scan(const Board& board, const Setting& set, Side root, Side gains, Mobility mobility)
      : b_(board), set_(set), root_(root), gains_(gains), mobility_(mobility) {
    for (int x = 0; x < 8; ++x)
      for (int y = 0; y < 8; ++y) {
        if (seen(b_, white, x, y) > 0) man(white, x, y);
        if (seen(b_, black, x, y) > 0) man(black, x, y);
      }
  }

  Both<Figures> f{};

 private:
  int divisor(Side whose_king, int x, int y) const {
    const int dx = x - set_.king_file[whose_king], dy = y - set_.king_rank[whose_king];
    return dx * dx + dy * dy + 2;
  }

  bool kings_fight(Side side) const { return set_.officers_total[other(side)] <= 90; }

  void note(Side side, int x, int y) {
    add(f[side].cen, centroo(x, y));
    add(f[side].kattack, 1.0 / divisor(other(side), x, y));
    add(f[side].kdefend, 1.0 / divisor(side, x, y));
  }

  void count_move(Side side, int x1, int y1, int x2, int y2) {
    if (mobility_ == Mobility::legal_moves) {
      Board after = b_;
      const auto from = static_cast<std::size_t>(8 * x1 + y1);
      const auto to = static_cast<std::size_t>(8 * x2 + y2);
      after[to] = after[from];
      after[from] = 0;
      if (std::abs(after[to]) == pawn && rank_of(side, y2) == 7)
        after[to] = side == white ? queen : -queen;
      if (king_attacked(after, side)) return;
    }
    f[side].mob += 1;
  }

  void extend(Side side, int x, int y) {
    Figures& g = f[side];
    if (x < g.xmin) g.xmin = x;
    if (x > g.xmax) g.xmax = x;
    if (y < g.ymin) g.ymin = y;
    if (y > g.ymax) g.ymax = y;
  }

  void man(Side side, int x, int y) {
    f[side].advance += rank_of(side, y) + 1;
    const int kind = seen(b_, side, x, y);
    if (kind == pawn)
      pawn_man(side, x, y);
    else if (kind == king)
      king_man(side, x, y);
    else
      officer(side, kind, x, y);
  }

  void officer(Side side, int kind, int x, int y) {
    Figures& g = f[side];
    const int n = set_.men[white] + set_.men[black];
    const double p = side == root_ ? static_cast<double>(set_.agresprxrei) : 1.0;
    const double c = centro(x, y);
    const int to_king = divisor(other(side), x, y);
    const bool off_first_rank = rank_of(side, y) != 0;

    g.officers += 1;
    if (kind == knight) {
      g.knights += 1;
      g.weight += 3;
      if (off_first_rank) add(g.pos, 15);
      add(g.pos, c * (n < 15 ? 10 : 25));
      add(g.pos, (n < 15 ? 15 * p : 5 * p) / to_king);
    }
    if (kind == bishop) {
      g.bishops += 1;
      g.weight += 3;
      if (off_first_rank) add(g.pos, 15);
      if (x == y || x + y == 7) add(g.pos, n > 14 ? 11 : 5);
    }
    if (kind == rook) {
      g.rooks += 1;
      g.weight += 5;
      if (x != 0 && x != 7) add(g.pos, 15);
      if (n < 15) add(g.pos, 10 * p / to_king);
      if (n < 11 && rank_of(side, y) >= 6) add(g.pos, 11);
    }
    if (kind == queen) {
      g.queens += 1;
      g.weight += 9;
      if (off_first_rank) add(g.pos, 15);
      add(g.pos, c * (n < 15 ? 15 : 10));
      add(g.pos, (n < 15 ? 25 * p : 5 * p) / to_king);
    }
    for (const Square to : reach(b_, x, y)) reached(side, kind, x, y, to);
  }

  void king_man(Side side, int x, int y) {
    extend(side, x, y);
    if (!kings_fight(side)) return;
    const double p = side == root_ ? static_cast<double>(set_.agresprxrei) : 1.0;
    add(f[side].pos, static_cast<double>(centro(x, y)) * 50);
    if (set_.men[other(side)] == 0) add(f[side].pos, 75 * p / divisor(other(side), x, y));
    for (const Square to : reach(b_, x, y)) reached(side, king, x, y, to);
  }

  void reached(Side side, int kind, int x, int y, Square to) {
    Figures& g = f[side];
    const int v = seen(b_, side, to.x, to.y);
    if (v <= 0) count_move(side, x, y, to.x, to.y);
    if (v < 0) {
      g.att += 1;
      if (side == gains_ && (kind == knight || kind == bishop || kind == rook) && -v > kind)
        add(g.pos, -v - kind);
    }
    if (v > 0) g.def += 1;
    if (v == rook || v == queen) {
      if (kind == rook) add(g.pos, to.y == y ? 3 : 5);
      if (kind == queen) add(g.pos, 1);
    }
    note(side, to.x, to.y);
  }

  void pawn_man(Side side, int x, int y) {
    const Side foe = other(side);
    const int up = forward(side);
    Figures& g = f[side];
    const std::array<int, 2> sides = {+1, -1};

    // 1
    g.pawns += 1;
    extend(side, x, y);

    // 2
    if (!kings_fight(side)) {
      const int ahead_of_king = rank_of(side, y) - rank_of(side, set_.king_rank[side]);
      const int beside = std::abs(x - set_.king_file[side]);
      if (beside <= 1 && ahead_of_king >= 0 && ahead_of_king <= 2) g.shield += 1;
      for (int s : sides)
        if (on_board(x + s, y + up)) note(side, x + s, y + up);
    } else {
      add(g.pos, static_cast<double>(promo(side, y)) * 100);
      add(g.pos, 25.0 / divisor(side, x, y));
      add(f[foe].pos, 25.0 / divisor(foe, x, y));
    }

    // 3
    for (int s : sides) {
      const int v = -seen(b_, side, x + s, y + up);
      if (v <= 0) continue;
      const bool guarded =
          seen(b_, side, x + 1, y - up) == pawn || seen(b_, side, x - 1, y - up) == pawn;
      if (side == gains_) add(g.pos, v * static_cast<double>(set_.agres) - 10);
      if (side != gains_ && v > 10 && guarded) add(g.pos, v / 2);
      g.att += 1;
      count_move(side, x, y, x + s, y + up);
    }

    // 4
    const bool one = on_board(x, y + up) && seen(b_, side, x, y + up) == 0;
    if (one) count_move(side, x, y, x, y + up);
    if (one && rank_of(side, y) == 1 && seen(b_, side, x, y + 2 * up) == 0)
      count_move(side, x, y, x, y + 2 * up);

    // 5
    for (int s : sides)
      if (seen(b_, side, x + s, y + up) > 0) g.def += 1;

    // 6
    if (rank_of(side, y) == 6) add(g.pos, 100);

    // 7 and 8
    for (int s : sides)
      if (seen(b_, side, x + s, y) == pawn) add(g.pos, 13);
    for (int s : sides)
      if (seen(b_, side, x + s, y + up) == pawn) add(g.pos, 11);

    // 9
    for (int s : sides)
      if (lever(side, x, y, s)) add(g.pos, 25);

    // 10
    passer(side, x, y);
  }

  bool lever(Side side, int x, int y, int s) const {
    const int up = forward(side);
    if (!on_board(x + s, y + up)) return false;
    if (std::abs(seen(b_, side, x + s, y + up)) == pawn) return false;
    int squares = 0;
    for (int r = rank_of(side, y) + 2; r < 7; ++r) {
      const int j = side == white ? r : 7 - r;
      ++squares;
      if (seen(b_, side, x, j) == -pawn) return false;
      if (seen(b_, side, x + 2 * s, j) == -pawn) return false;
    }
    return squares > 0;
  }

  void passer(Side side, int x, int y) {
    for (int r = rank_of(side, y) + 1; r < 7; ++r) {
      const int j = side == white ? r : 7 - r;
      const int on_file = seen(b_, side, x, j);
      const int left = seen(b_, side, x - 1, j), right = seen(b_, side, x + 1, j);
      if (on_file == pawn || on_file == -pawn || left == -pawn || right == -pawn) return;
      if (left == pawn) add(f[side].pos, 10);
      if (right == pawn) add(f[side].pos, 10);
    }
    add(f[side].pos, 33);
  }

  const Board& b_;
  const Setting& set_;
  const Side root_, gains_;
  const Mobility mobility_;
};

using Long = long double;

Long ln(Long v) {
  return std::log(v);
}

// The sum of a formula, rounded once; one that is no number counts as nothing.
float rounded(Long sum) {
  return std::isnan(sum) ? 0 : static_cast<float>(sum);
}

Long advance_term(const Figures& f) {
  return (static_cast<Long>(f.advance) + 0.1) / (f.officers + f.pawns + 1);
}
Long density_term(const Figures& f) {
  return static_cast<Long>(f.pawns + 1) /
         static_cast<Long>((f.xmax - f.xmin + 1) * (f.ymax - f.ymin + 1));
}
// Safety of the king of `d` from the men of `a`, and its inverse.
Long safety(const Figures& d, const Figures& a) {
  return 5 * ln((static_cast<Long>(d.kdefend) + d.shield + 3) / (static_cast<Long>(a.kattack) + 3));
}
Long danger(const Figures& a, const Figures& d) {
  return 5 * ln((static_cast<Long>(a.kattack) + 3) / (static_cast<Long>(d.kdefend) + d.shield + 3));
}
Long ratio(Long mine, Long his, Long base) {
  return ln((mine + base) / (his + base));
}
Long castling_term(const Setting& set, Side r) {
  if (set.castling[white] == 0 && set.castling[black] == 0) return 0;
  return set.castling_weight * ratio(set.castling[r], set.castling[other(r)], 3);
}
Long weight_term(const Figures& r, const Figures& o) {
  return 2 * ratio(r.weight, o.weight, 10.1);
}
Long pos_term(const Setting& set, const Figures& r, const Figures& o) {
  return set.pos_weight *
         ratio(static_cast<Long>(r.pos) + r.cen, static_cast<Long>(o.pos) + o.cen, 10.1);
}
Long mob_term(const Setting& set, const Figures& r, const Figures& o) {
  return set.mob_weight * ratio(r.mob, o.mob, 3);
}

bool weak(const Figures& f) {
  if (f.bishops == 0 && f.knights <= 2) return true;
  if (f.knights == 0 && f.bishops <= 1) return true;
  return false;
}

int wrap(std::int64_t v) {
  return static_cast<int>(static_cast<std::uint32_t>(static_cast<std::uint64_t>(v)));
}

// My attackers of a square against his, by kind.
struct Clash {
  int p, n, b, r, q, k, all;
};
Clash clash(const Attacks& a, std::size_t s) {
  return {a.by_kind[0][s], a.by_kind[1][s], a.by_kind[2][s], a.by_kind[3][s],
          a.by_kind[4][s], a.by_kind[5][s], a.all[s]};
}

int credit(int his_man, const Clash& me, const Clash& him, const Setting& set, Side root) {
  const bool defended = him.all != 0;
  if (his_man == king && me.all != 0 && set.men[other(root)] != 0) return 11 * set.check_value;
  if (his_man == queen && (me.p || me.n || me.b || me.r)) return 100;
  if (his_man == rook && (me.p || me.n || me.b)) return 50;
  if (his_man == rook && (me.q || me.k) && !defended) return 25;
  if (his_man == knight && me.p) return 35;
  if (his_man == knight && (me.r || me.b || me.q || me.k) && !defended) return 17;
  if (his_man == bishop && me.p) return 30;
  if (his_man == bishop && (me.r || me.n || me.k) && !defended) return 15;
  if (his_man == pawn && !me.p && !him.p && (me.n || me.b || me.r || me.q || me.k) && !defended)
    return 10;
  return 0;
}

int debit(int my_man, const Clash& me, const Clash& him) {
  const bool outnumbered = him.all > me.all;
  if (my_man == queen && (him.p || him.n || him.b || him.r)) return 100;
  if (my_man == queen && outnumbered && !me.p && me.n + me.b + me.r <= 1) return 100;
  if (my_man == rook && (him.p || him.n || him.b)) return 50;
  if (my_man == rook && outnumbered && !me.p && me.n + me.b <= 1) return 50;
  if ((my_man == knight || my_man == bishop) && him.p) return 30;
  if ((my_man == knight || my_man == bishop) && outnumbered && !me.p) return 30;
  if (my_man == pawn && outnumbered) return 10;
  return 0;
}

}  // namespace

Setting setting_from_slots() {
  using namespace korvu;
  Setting s{};
  s.king_file = {p_x_Rb, p_x_Rp};
  s.king_rank = {p_y_Rb, p_y_Rp};
  s.men = {npecasb, npecasp};
  s.total = {materialba, materialpa};
  s.officers_total = {materialmaiorb, materialmaiorp};
  s.castling = {roque_b, roque_p};
  s.agres = korvu::agres;
  s.agresprxrei = korvu::agresprxrei;
  s.mob_weight = MOB;
  s.pos_weight = PM;
  s.castling_weight = roque_v;
  s.budget = piecesac;
  s.matrix = korvu::matrix;
  s.check_value = agreschrei;
  s.shashinn = korvu::shashinn;
  s.extraevalll = korvu::extraevalll;
  return s;
}

Board board_from_bytes(const std::array<unsigned char, 64>& bytes) {
  Board b{};
  for (std::size_t s = 0; s < 64; ++s) b[s] = bytes[s] < 128 ? bytes[s] : bytes[s] - 256;
  return b;
}

Both<Figures> scan(const Board& board, const Setting& set, Side root, Side gains,
                   Mobility mobility) {
  return Scan(board, set, root, gains, mobility).f;
}

Leaf leaf(const Board& board, const Setting& set, Side root, Side to_move) {
  Leaf l{};
  l.figures = scan(board, set, root, to_move, Mobility::every_move);
  const Figures &r = l.figures[root], &o = l.figures[other(root)];
  Long sum = set.extraevalll;                // 1
  sum += advance_term(r) - advance_term(o);  // 2
  sum += density_term(r) - density_term(o);  // 3
  sum += weight_term(r, o);                  // 4
  sum += castling_term(set, root);           // 5
  const Long lean = set.shashinn;
  sum += lean * 0.01 * ratio(r.att, r.def, 3) + lean * 0.001 * ratio(o.att, o.def, 3);  // 6, 7
  sum += safety(r, o);                                                                  // 8
  sum += danger(r, o);                                                                  // 9
  sum += mob_term(set, r, o);                                                           // 10
  sum += pos_term(set, r, o);                                                           // 11
  l.correction = rounded(sum);
  const auto limit = static_cast<float>(set.budget);
  if (l.correction > limit) l.correction = limit;
  if (l.correction < -limit) l.correction = -limit;

  const Figures &w = l.figures[white], &b = l.figures[black];
  const int heavy = w.pawns + b.pawns + w.rooks + b.rooks + w.queens + b.queens;
  l.drawn = heavy == 0 && weak(w) && weak(b);
  return l;
}

Both<Attacks> attacks(const Board& board) {
  Both<Attacks> out{};
  for (int from = 0; from < 64; ++from) {
    const int v = board[static_cast<std::size_t>(from)];
    if (v == 0) continue;
    Attacks& a = out[v > 0 ? white : black];
    for (int to = 0; to < 64; ++to) {
      if (!attacks_square(board, from / 8, from % 8, to / 8, to % 8)) continue;
      for (std::size_t k = 0; k < kinds.size(); ++k)
        if (kinds[k] == std::abs(v)) a.by_kind[k][static_cast<std::size_t>(to)] += 1;
      a.all[static_cast<std::size_t>(to)] += 1;
    }
  }
  return out;
}

Rating rating(const Board& after, const Both<Attacks>& attackers, const Setting& set, Side root,
              int matriz, bool promotion_urged) {
  Rating out{};
  const Side foe = other(root);
  out.figures = scan(after, set, root, foe, Mobility::legal_moves);
  const Figures &r = out.figures[root], &o = out.figures[foe];
  const Long e = castling_term(set, root) + safety(r, o) + weight_term(r, o) + advance_term(r) -
                 advance_term(o) + density_term(r) - density_term(o) + danger(r, o) +
                 mob_term(set, r, o) + pos_term(set, r, o);
  const Long lean = set.shashinn;
  out.inherited = rounded(0.01 * e + lean * 0.01 * ratio(r.att, r.def, 3) +
                          lean * 0.001 * ratio(o.att, o.def, 3));

  for (std::size_t s = 0; s < 64; ++s) {
    const int v = root == white ? after[s] : -after[s];
    const Clash me = clash(attackers[root], s), him = clash(attackers[foe], s);
    if (v < 0) out.exchange += credit(-v, me, him, set, root);
    if (v > 0) out.exchange -= debit(v, me, him);
  }

  out.matriz = matriz;
  if (promotion_urged) {
    const float q = set.total[root] / set.total[foe];
    if (out.exchange < 0)
      out.matriz = matriz / (q > 1 ? 3 : q < 1 ? 5 : 4);
    else
      out.matriz = wrap(static_cast<std::int64_t>(matriz) * (q > 1 ? 5 : q < 1 ? 3 : 4));
  }
  out.ataque = wrap(out.exchange + static_cast<std::int64_t>(out.matriz) * set.matrix);
  out.estrategia = out.ataque;
  if (out.estrategia > 100) out.estrategia = 100;
  if (out.estrategia < -100) out.estrategia = -100;
  return out;
}

Reading root_reading(const Board& board, Setting set, Side root) {
  for (const Side side : {white, black}) {
    int men = 0, total = 0, officers = 0;
    for (const int signed_value : board) {
      const int v = side == white ? signed_value : -signed_value;
      if (v <= 0) continue;
      total += v;
      if (v != king) ++men;
      if (v != king && v != pawn) officers += v;
    }
    set.men[side] = men;
    set.total[side] = static_cast<float>(total);
    set.officers_total[side] = static_cast<float>(officers);
  }
  Reading out{};
  out.figures = scan(board, set, root, root, Mobility::legal_moves);
  const Figures &r = out.figures[root], &o = out.figures[other(root)];
  const Long mine = set.total[root], his = set.total[other(root)];
  const Long sum = 0.1 * ln((his + 0.1) / (mine + 0.1)) + safety(r, o) + danger(r, o) +
                   weight_term(r, o) + mob_term(set, r, o) + density_term(r) - advance_term(r) +
                   advance_term(o) - density_term(o);
  out.shashinn = rounded(sum);
  return out;
}

}  // namespace plain
