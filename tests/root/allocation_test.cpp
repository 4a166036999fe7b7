// A search takes no memory: all that it needs stands ready when the process starts.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <ostream>
#include <streambuf>

#include "board/state.h"
#include "frontend/report.h"
#include "memory/game_memory.h"
#include "root/driver.h"
#include "root/first_ply.h"
#include "root/ladder.h"
#include "support/lab.h"
#include "tree/clock.h"

namespace {

long allocations = 0;

void* counted(std::size_t size) {
  ++allocations;
  void* p = std::malloc(size == 0 ? 1 : size);
  if (p == nullptr) throw std::bad_alloc();
  return p;
}

}  // namespace

void* operator new(std::size_t size) {
  return counted(size);
}
void* operator new[](std::size_t size) {
  return counted(size);
}
void operator delete(void* p) noexcept {
  std::free(p);
}
void operator delete[](void* p) noexcept {
  std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
  std::free(p);
}
void operator delete[](void* p, std::size_t) noexcept {
  std::free(p);
}

namespace korvu {
namespace {

long taken_by(void (*work)()) {
  const long before = allocations;
  work();
  return allocations - before;
}

TEST(Allocation, IsCounted) {
  EXPECT_GE(taken_by([] { ::operator delete(::operator new(8)); }), 1);
}

// Takes everything and keeps nothing.
class Nowhere : public std::streambuf {
  int_type overflow(int_type c) override { return traits_type::not_eof(c); }
};

int lines_told = 0;

template <Cor root>
void search_to_depth_11() {
  relata_linha = [] {
    ++lines_told;
    info_deept();
  };
  tempo = 300000;
  deep = 9;
  deepp = 11;
  procura<root>();
  deepp = 17;
}

TEST(Allocation, NoneInASearchWithTablesReductionsNullMovesAndReports) {
  Nowhere nowhere;
  std::ostream told(&nowhere);
  saida = &told;
  lab::position("8/5pk1/6p1/8/3P4/6P1/5K2/3R4 w - - 0 1");
  EXPECT_EQ(taken_by(search_to_depth_11<Cor::b>), 0);
  EXPECT_GT(nodes, 1000U);
  EXPECT_EQ(deep, 11);
  lab::position("3r4/5k2/6p1/3p4/8/6P1/5PK1/8 b - - 0 1");
  nodes = 0;
  EXPECT_EQ(taken_by(search_to_depth_11<Cor::p>), 0);
  EXPECT_GT(nodes, 1000U);
  EXPECT_EQ(deep, 11);
  EXPECT_GT(lines_told, 20);
  saida = nullptr;
}

TEST(Allocation, NoneInTheShortScanNorInTheMemoryOfTheGame) {
  lab::position("rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1");
  deep = 3;
  SCANT = 1;
  relata_linha = [] {};
  EXPECT_EQ(taken_by(percorre_primeiro_lance<Cor::b>), 0);
  EXPECT_GT(nodes, 20U);
  guarda_linha("position startpos moves a2a3 a7a6");
  EXPECT_EQ(taken_by([] {
              hash_mem_build(300000);
              hash_mem_scan(300000);
            }),
            0);
  EXPECT_EQ(mem_TEST, 1);
}

}  // namespace
}  // namespace korvu
