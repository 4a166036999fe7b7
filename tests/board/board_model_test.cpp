// Codes, squares, the slots of a ply and what passes from one ply to the next.
#include <gtest/gtest.h>

#include <algorithm>

#include "board/move.h"
#include "frontend/position.h"
#include "root/driver.h"
#include "sides.h"
#include "tree/node_body.h"

namespace {

using namespace korvu;
using kit::Seen;

// Before anything is played or tested; this test runs in a process of its own.
TEST(NewProcess, ExpectsTheKingsAtHomeAndNoKingSafeYet) {
  EXPECT_EQ(p_x_Rb, 4);
  EXPECT_EQ(p_y_Rb, 0);
  EXPECT_EQ(p_x_Rp, 4);
  EXPECT_EQ(p_y_Rp, 7);
  for (std::size_t n = 1; n <= 23; ++n) EXPECT_EQ(XEQUE_MATE[n], 1) << n;
  EXPECT_EQ(std::count(tab.begin(), tab.end(), vazia), 64) << "no board before a position line";
  EXPECT_EQ(empp, -5);
}

TEST(PieceCodes, AreTheValuesNegatedForBlackAsBytes) {
  struct Row {
    Peca man;
    int white, black, black_byte;
  };
  for (const Row& r : {Row{Peca::peao, 10, -10, 246}, Row{Peca::cavalo, 32, -32, 224},
                       Row{Peca::bispo, 33, -33, 223}, Row{Peca::torre, 50, -50, 206},
                       Row{Peca::dama, 90, -90, 166}, Row{Peca::rei, 110, -110, 146}}) {
    EXPECT_EQ(codigo_de(r.man, Cor::b), r.white);
    EXPECT_EQ(codigo_de(r.man, Cor::p), r.black_byte);
    EXPECT_EQ(com_sinal(codigo_de(r.man, Cor::b)), r.white);
    EXPECT_EQ(com_sinal(codigo_de(r.man, Cor::p)), r.black);
    EXPECT_EQ(Lado<Cor::b>::visto(static_cast<std::uint8_t>(r.black_byte)), r.black);
    EXPECT_EQ(Lado<Cor::p>::visto(static_cast<std::uint8_t>(r.black_byte)), r.white);
  }
}

TEST(PieceCodes, TheSignTellsTheColour) {
  for (const char man : std::string_view("PNBRQK")) {
    EXPECT_TRUE(Lado<Cor::b>::propria(kit::code_of(man)));
    EXPECT_TRUE(Lado<Cor::p>::inimiga(kit::code_of(man)));
    EXPECT_FALSE(Lado<Cor::b>::inimiga(kit::code_of(man)));
  }
  for (const char man : std::string_view("pnbrqk")) {
    EXPECT_TRUE(Lado<Cor::p>::propria(kit::code_of(man)));
    EXPECT_TRUE(Lado<Cor::b>::inimiga(kit::code_of(man)));
    EXPECT_FALSE(Lado<Cor::p>::inimiga(kit::code_of(man)));
  }
  EXPECT_FALSE(Lado<Cor::b>::propria(0) || Lado<Cor::b>::inimiga(0));
}

TEST(Squares, AreNumberedFileByFile) {
  struct Row {
    int file, rank;
    std::size_t index;
  };
  for (const Row& r :
       {Row{0, 0, 0}, Row{0, 1, 1}, Row{0, 7, 7}, Row{1, 0, 8}, Row{2, 0, 16}, Row{3, 0, 24},
        Row{4, 0, 32}, Row{5, 0, 40}, Row{6, 0, 48}, Row{7, 0, 56}, Row{2, 7, 23}, Row{3, 7, 31},
        Row{4, 7, 39}, Row{5, 7, 47}, Row{6, 7, 55}, Row{7, 7, 63}})
    EXPECT_EQ(casa(r.file, r.rank), r.index) << r.file << ',' << r.rank;
}

TEST(Squares, AScanMeetsTheSquaresOfAFileTogether) {
  std::size_t next = 0;
  percorre_tabuleiro([&](int x, int y, std::size_t s) {
    EXPECT_EQ(s, next);
    EXPECT_EQ(static_cast<std::size_t>(x), next / 8);
    EXPECT_EQ(static_cast<std::size_t>(y), next % 8);
    ++next;
    return false;
  });
  EXPECT_EQ(next, 64U);
}

TEST(Squares, AScanEndsWhenItIsTold) {
  int met = 0;
  EXPECT_TRUE(percorre_tabuleiro([&](int, int, std::size_t s) { return ++met, s == 11; }));
  EXPECT_EQ(met, 12);
  EXPECT_FALSE(percorre_tabuleiro([](int, int, std::size_t) { return false; }));
}

TEST(MoveText, IsTwoSquaresInLetters) {
  const Texto t = texto_do_lance(0, 0, 7, 7);
  EXPECT_EQ((std::string{t.A, t.B, t.C, t.D}), "a1h8");
  const Texto u = texto_do_lance(4, 1, 4, 3);
  EXPECT_EQ((std::string{u.A, u.B, u.C, u.D}), "e2e4");
}

TEST(NewGame, HasTheStartPositionAndNoHistory) {
  kit::place("4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1");
  nb = 12;
  peca = -10;
  guardado[5] = guardado_g[7] = melhor = {1, 2, 3, 4};
  zera_jogo(Caminho::primeiro_lance);

  const Tabuleiro start = kit::board_of(referee::Position::start());
  EXPECT_EQ(kit::difference(tab, start), "");
  for (const Seen seen : kit::both_sides) {
    EXPECT_EQ(seen.own_rights_lost(0), (std::array<int, 3>{0, 0, 0}));
    EXPECT_EQ(seen.own_double_steps(0), (std::array<std::uint8_t, 8>{}));
  }
  EXPECT_EQ(nb, 1);
  EXPECT_EQ(tabr1.size(), 1000U);
  for (const Tabuleiro& t : tabr1)
    ASSERT_TRUE(std::all_of(t.begin(), t.end(), [](std::uint8_t q) { return q == 1; }));

  EXPECT_EQ(materialba, 510);
  EXPECT_EQ(materialpa, 510);
  EXPECT_EQ(materialmaiorb, 320);
  EXPECT_EQ(materialmaiorp, 320);
  EXPECT_EQ(materialflot0, 0);
  EXPECT_EQ(npecasb, 15);
  EXPECT_EQ(npecasp, 15);
  EXPECT_EQ(npecasbdp, 7);
  EXPECT_EQ(npecaspdp, 7);
  EXPECT_EQ(peca, 0);

  const Lance none = {-1, -1, -1, -1};
  EXPECT_EQ(melhor, none);
  for (std::size_t n = 1; n <= 23; ++n) {
    EXPECT_EQ(guardado[n], none) << n;
    EXPECT_EQ(guardado_g[n], none) << n;
  }
}

TEST(MateScores, FallByTwoPlies) {
  const std::array<float, 25> of_ply = {
      16500, 15400, 15400, 14300, 14300, 13200, 13200, 12100, 12100, 11000, 11000, 9900, 9900,
      8800,  8800,  7700,  7700,  6600,  6600,  5500,  5500,  4400,  4400,  3300,  3300};
  for (int n = 1; n <= 24; ++n)
    EXPECT_EQ(valor_do_mate(n), of_ply[static_cast<std::size_t>(n)]) << "ply " << n;
}

TEST(CastlingMarks, AreWorthMoreTheEarlier) {
  const std::array<int, 24> of_ply = {10, 10, 9, 9, 8, 8, 7, 7, 6, 6, 5, 5,
                                      4,  4,  3, 3, 2, 2, 2, 2, 2, 2, 2, 2};
  for (int n = 0; n <= 23; ++n)
    EXPECT_EQ(valor_do_roque_em(n), of_ply[static_cast<std::size_t>(n)]) << "ply " << n;
}

// --- Material ---

struct Change {
  std::string_view fen, move;
  float own, other;  // by how much the totals change
  int promotion, in_passing;
};

constexpr Change changes[] = {
    {"4k3/8/8/8/8/5N2/8/4K3 w - - 0 1", "f3e5", 0, 0, 0, 0},
    {"4k3/8/8/4q3/8/5N2/8/4K3 w - - 0 1", "f3e5", 0, -90, 0, 0},
    {"4k3/8/8/8/8/8/4P3/4K3 w - - 0 1", "e2e4", 0, 0, 0, 0},
    {"4k3/8/8/3r4/4P3/8/8/4K3 w - - 0 1", "e4d5", 0, -50, 0, 0},
    // A pawn that takes in passing counts for the taker; the victim's total stays.
    {"4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1", "e5d6", 10, 0, 0, 10},
    {"8/4P3/8/8/8/8/k7/4K3 w - - 0 1", "e7e8q", 80, 0, 80, 0},
    {"3b4/4P3/8/8/8/8/k7/4K3 w - - 0 1", "e7d8q", 80, -33, 80, 0},
    // Another man on the rank before the last one is no promotion.
    {"3b4/4R3/8/8/8/8/k7/4K3 w - - 0 1", "e7e8", 0, 0, 0, 0},
    {"3b4/4K3/8/8/8/8/k7/8 w - - 0 1", "e7d8", 0, -33, 0, 0},
};

// The totals of ply De + 1 after a move unplayed on the board of ply De.
template <int De, Cor cor>
void expect_changes() {
  const Seen seen{cor == Cor::b};
  for (const Change& c : changes) {
    SCOPED_TRACE(std::string(c.fen) + ' ' + std::string(c.move));
    kit::place(seen.fen(c.fen));
    kit::copy_root_to(De);
    material<cor>(De) = 400;
    material<outra(cor)>(De) = 300;
    const auto [x1, y1, x2, y2] = seen.squares(c.move);
    mede_peao<De, cor>(x1, y1, x2, y2);
    EXPECT_EQ(promocao, c.promotion);
    EXPECT_EQ(ppassado, c.in_passing);
    atualiza_material<De + 1, De, cor>(x2, y2);
    EXPECT_EQ(material<cor>(De + 1), 400 + c.own);
    EXPECT_EQ(material<outra(cor)>(De + 1), 300 + c.other);
  }
}

template <int... De>
void expect_changes_from(std::integer_sequence<int, De...>) {
  (expect_changes<De + 1, Cor::b>(), ...);
  (expect_changes<De + 1, Cor::p>(), ...);
}

TEST(PlyMaterial, ChangesByPromotionsAndCaptures) {
  expect_changes_from(std::make_integer_sequence<int, 22>{});
}

TEST(PlyMaterial, StartsAHundredLowerAtTheFirstPly) {
  kit::place("4k3/8/8/3r4/4P3/8/8/4K3 w - - 0 1");
  const auto [x1, y1, x2, y2] = kit::squares_of("e4d5");
  mede_peao<0, Cor::b>(x1, y1, x2, y2);
  atualiza_material<1, 0, Cor::b>(x2, y2);
  EXPECT_EQ(materialb[1], 20);  // 110 + 10 - 100
  EXPECT_EQ(materialp[1], 10);  // 110 + 50 - 100 - 50

  kit::place("4k3/8/8/8/3Pp3/8/8/4K3 b - d3 0 1");
  const auto [u1, v1, u2, v2] = kit::squares_of("e4d3");
  mede_peao<0, Cor::p>(u1, v1, u2, v2);
  atualiza_material<1, 0, Cor::p>(u2, v2);
  EXPECT_EQ(materialp[1], 30);  // 110 + 10 - 100 + 10
  EXPECT_EQ(materialb[1], 20);  // 110 + 10 - 100
}

// --- From ply to ply ---

template <int De, Cor cor>
void expect_copied() {
  constexpr int Para = De + 1;
  const Seen seen{cor == Cor::b};
  kit::place("r3k2r/p6p/8/1pP5/8/8/8/R3K2R w Kq b6 0 1");
  kit::copy_root_to(De);
  kit::copy_root_to(Para);
  tabd[Para].fill(1);
  jm_D[Para] = {9, 9, 9, 9, 9, 9};
  duplos_D[Para] = {};
  copia_posicao<Para, De>();
  EXPECT_EQ(kit::difference(tabd[Para], tab), "") << "ply " << Para;
  EXPECT_EQ(seen.own_rights_lost(Para), seen.own_rights_lost(0));
  EXPECT_EQ(seen.other_rights_lost(Para), seen.other_rights_lost(0));
  EXPECT_EQ(seen.own_double_steps(Para), seen.own_double_steps(0));
  EXPECT_EQ(seen.other_double_steps(Para), seen.other_double_steps(0));
  // The position has rights on both sides to lose, and a double step.
  ASSERT_EQ(Seen{true}.own_rights_lost(0), (std::array<int, 3>{0, 1, 0}));
  ASSERT_EQ(Seen{false}.own_rights_lost(0), (std::array<int, 3>{0, 0, 1}));
  ASSERT_EQ(Seen{false}.own_double_steps(0)[1], 1);
}

// A node takes over the board before the move, makes the move on its own board and is ready for
// its loops; the ply above stays.
template <int De, Cor cor>
void expect_node_set_up() {
  constexpr int Para = De + 1;
  const Seen seen{cor == Cor::b};
  kit::place(seen.fen("r3k2r/8/8/1pP5/8/8/8/R3K2R w KQkq b6 0 1"));
  kit::copy_root_to(De);
  tabd[Para].fill(1);
  X_D[Para] = 0;
  XEQUE_MATE[Para] = 0;
  kit::cut_flag(Para) = 1;
  const auto [x1, y1, x2, y2] = seen.squares("c5b6");
  monta_no<Para, De, cor>(x1, y1, x2, y2);
  EXPECT_EQ(kit::difference(tabd[Para], seen.board("r3k2r/8/1P6/8/8/8/8/R3K2R b KQkq - 0 1")), "");
  EXPECT_EQ(kit::difference(tabd[De], seen.board("r3k2r/8/8/1pP5/8/8/8/R3K2R w KQkq b6 0 1")), "");
  EXPECT_EQ(seen.other_double_steps(De)[1], 1);
  EXPECT_EQ(seen.other_double_steps(Para)[1], 0);
  EXPECT_EQ(X_D[Para], 1);
  EXPECT_EQ(XEQUE_MATE[Para], 1);
  EXPECT_EQ(kit::cut_flag(Para), 0);
}

template <int... De>
void expect_passed_on(std::integer_sequence<int, De...>) {
  (expect_copied<De, Cor::b>(), ...);
  (expect_copied<De, Cor::p>(), ...);
  (expect_node_set_up<De, Cor::b>(), ...);
  (expect_node_set_up<De, Cor::p>(), ...);
}

TEST(FromPlyToPly, BoardAndFlagsArePassedOn) {
  expect_passed_on(std::make_integer_sequence<int, 23>{});
}

TEST(FromPlyToPly, ASearchLeavesTheRootAlone) {
  const std::string_view fen = "r3k2r/p2p3p/8/1pP5/8/8/6P1/R3K2R w Kq b6 0 1";
  kit::place(fen);
  deep = 5;
  nodes = 0;
  procura<Cor::b>();
  EXPECT_GT(nodes, 500U);
  EXPECT_EQ(kit::difference(tab, kit::board_of(fen)), "");
  EXPECT_EQ(Seen{true}.own_rights_lost(0), (std::array<int, 3>{0, 1, 0}));
  EXPECT_EQ(Seen{false}.own_rights_lost(0), (std::array<int, 3>{0, 0, 1}));
  EXPECT_EQ(Seen{false}.own_double_steps(0), (std::array<std::uint8_t, 8>{0, 1}));
  EXPECT_EQ(Seen{true}.own_double_steps(0), (std::array<std::uint8_t, 8>{}));
}

}  // namespace
