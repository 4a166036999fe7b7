// The text of the running line, written by the nodes on the way down.
#include <gtest/gtest.h>

#include <string>

#include "tree/tree_lab.h"

namespace korvu {
namespace {

using namespace tree_lab;

std::string text_of(const Texto& t) {
  return {t.A, t.B, t.C, t.D};
}

template <Cor cor>
std::string told(const std::string& move) {
  const Lance m = move_of<cor>(move);
  return text_of(texto_do_lance(m.aa, m.bb, m.cc, m.dd));
}

TEST(LineText, NodesOfPlies2To8WriteTheirMoveOnePlaceUp) {
  each_node<2, 8>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    stand(N - 1, told_for<cor>(locked));
    deep = N - 1;
    enter<N, cor>("d1e1");
    EXPECT_EQ(text_of(linha[N - 1]), told<cor>("d1e1")) << "leaves too";
    for (std::size_t k = 0; k < linha.size(); ++k)
      if (k != N - 1) {
        EXPECT_EQ(linha[k].A, ' ') << k;
      }
  });
}

TEST(LineText, ANodeWithoutDepthWritesToo) {
  each_node<3, 8>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    stand(N - 1, told_for<cor>(locked));
    deep = N - 2;
    enter<N, cor>("d1e1");
    EXPECT_EQ(text_of(linha[N - 1]), told<cor>("d1e1"));
  });
}

TEST(LineText, TheFirstMoveWrittenStays) {
  each_node<2, 8>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    stand(N - 1, told_for<cor>(locked));
    deep = N - 1;
    linha[N - 1] = {'x', '9', 'y', '0'};
    enter<N, cor>("d1e1");
    EXPECT_EQ(text_of(linha[N - 1]), "x9y0");
    linha[N - 1].A = ' ';
    enter<N, cor>("d1e1");
    EXPECT_EQ(text_of(linha[N - 1]), told<cor>("d1e1")) << "the first letter tells a blank";
  });
}

TEST(LineText, DeeperNodesWriteNothing) {
  each_node<9, 24>([]<int N, Cor cor>() {
    SCOPED_TRACE(at<cor>(N));
    stand(N - 1, told_for<cor>(locked));
    deep = N - 1;
    DEEP = 25;
    enter<N, cor>("d1e1");
    for (const Texto& t : linha) EXPECT_EQ(t.A, ' ');
  });
}

TEST(LineText, ASearchLeavesTheFirstLineThatItWalked) {
  stand(1, locked);
  deep = 7;
  enter<2, Cor::b>("d1e1");
  EXPECT_EQ(text_of(linha[1]), "d1e1");
  EXPECT_EQ(text_of(linha[2]), "d8e8") << "of the king's steps the one to the right comes first";
  EXPECT_EQ(text_of(linha[3]), "e1f1");
  EXPECT_EQ(text_of(linha[4]), "e8f8");
  EXPECT_EQ(text_of(linha[5]), "f1g1");
  EXPECT_EQ(text_of(linha[6]), "f8g8");
  EXPECT_EQ(text_of(linha[7]), "g1h1");
}

}  // namespace
}  // namespace korvu
