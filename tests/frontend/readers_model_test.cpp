// The three readers against a small model: which lines each of them hears, on dialogues of any
// order.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "frontend/dialogue.h"
#include "support/lab.h"

namespace {

using Words = std::vector<std::string>;

// What a position line leads to.
enum class Kind { none, first_move, one_move, game };

struct PositionLine {
  std::string text;
  Kind at_the_top, after_an_answer;
  std::string book;  // the reply that the book knows, or nothing
};

const PositionLine positions[] = {
    {"position startpos", Kind::first_move, Kind::first_move, "e2e4"},
    {"position startpos ", Kind::none, Kind::none, ""},
    {"position startpos moves e2e4", Kind::one_move, Kind::one_move, "d7d5"},
    {"position startpos moves c2c4", Kind::one_move, Kind::one_move, ""},
    {"position startpos moves e2e4 ", Kind::game, Kind::game, ""},
    {"position startpos moves e2e4q", Kind::game, Kind::game, ""},
    {"position startpos moves e2e4 e7e5", Kind::game, Kind::game, "g1f3"},
    {"position startpos moves d2d4 c7c5 d4d5", Kind::game, Kind::game, "d7d6"},
    {"position startpos moves a2a3 a7a6", Kind::game, Kind::game, ""},
    {"position startpos moves a2a3 a7a6 b2b3", Kind::game, Kind::game, ""},
    {"position startpos  moves e2e4 e7e5", Kind::none, Kind::none, ""},
    // Too short for a move: the columns are there, but only one reader asks how long the line is.
    {"position startpos moves", Kind::none, Kind::game, ""},
    {"position startpos moves e2", Kind::none, Kind::game, ""},
    {"position fen 4k3/p7/8/8/8/8/7P/4K3 w - - 0 1 moves e1e2", Kind::game, Kind::game, ""},
    {"position fen 4k3/p7/8/8/8/8/7P/4K3 b - - 0 1 moves e8e7", Kind::game, Kind::game, ""},
    {"position fan", Kind::game, Kind::game, ""},
};

class Model {
 public:
  Words answers;

  void hear(const std::string& line) {
    if (ended_) return;
    if (waits_for_go_) {
      if (line.starts_with("go")) search();
      return;
    }
    if (line == "uci" && !answered_) answers.push_back("uciok");
    if (line == "isready") answers.push_back("readyok");
    if (line == "quit") ended_ = true;
    if (line.starts_with("setoption name Own book value ")) book_ = line.ends_with("true");
    for (const PositionLine& p : positions)
      if (p.text == line) take(p);
  }

  void end_of_input() {
    if (!ended_ && waits_for_go_) search();
  }

 private:
  bool ended_ = false, waits_for_go_ = false, answered_ = false, book_ = true;

  void search() {
    answers.insert(answers.end(), {"info", "bestmove"});
    waits_for_go_ = false;
    answered_ = true;
  }

  void take(const PositionLine& p) {
    const Kind kind = answered_ ? p.after_an_answer : p.at_the_top;
    if (kind == Kind::none) return;
    answered_ = true;  // but for a game, which is answered at its go
    if (book_ && !p.book.empty())
      answers.push_back("bestmove " + p.book);
    else if (kind == Kind::game)
      waits_for_go_ = true;
    else if (!book_)
      search();
  }
};

// The answers of the engine in the model's words.
Words answered(const Words& lines) {
  std::stringstream asked, told;
  for (const std::string& line : lines) asked << line << '\n';
  korvu::dialogo(asked, told);
  Words words;
  for (std::string line; std::getline(told, line);) {
    if (line.starts_with("id ") || line.starts_with("option ") || line.starts_with("info nps "))
      continue;
    words.push_back(line.starts_with("info score ") ? "info" : line);
  }
  return words;
}

// A move of the book must be that move, one of a search may be any.
bool same(const std::string& modelled, const std::string& word) {
  return word == modelled || (modelled == "bestmove" && word.starts_with("bestmove "));
}

TEST(Readers, HearWhatTheModelHearsInAnyOrder) {
  const Words others = {"isready",
                        "isready",
                        "uci",
                        "quit",
                        "go",
                        "go",
                        "go wtime 9 btime 9",
                        "gone",
                        "Go",
                        " go",
                        "stop",
                        "ucinewgame",
                        "ponderhit",
                        "",
                        "isready ",
                        "uci ",
                        "setoption name Own book value false",
                        "setoption name Own book value true"};
  std::mt19937 dice(3);
  int searches = 0, of_the_book = 0;
  for (int k = 0; k < 60; ++k) {
    // Depth 0: a search prints its closing line alone.
    Words lines = {"setoption name Deep value 0", "setoption name Own book value true"};
    Model model;
    for (std::size_t n = dice() % 25; n > 0; --n)
      lines.push_back(dice() % 3 == 0 ? positions[dice() % std::size(positions)].text
                                      : others[dice() % others.size()]);
    for (const std::string& line : lines) model.hear(line);
    model.end_of_input();
    const Words words = answered(lines);
    std::string dialogue;
    for (const std::string& line : lines) dialogue += "> " + line + '\n';
    for (const std::string& word : words) dialogue += "< " + word + '\n';
    ASSERT_TRUE(std::ranges::equal(model.answers, words, same)) << dialogue;
    searches += static_cast<int>(std::ranges::count(words, "info"));
    of_the_book += static_cast<int>(std::ranges::count(model.answers, "bestmove g1f3"));
  }
  lab::dialogue({"setoption name Deep value 9", "setoption name Own book value true"});
  EXPECT_GT(searches, 30);
  EXPECT_GT(of_the_book, 1);
}

}  // namespace
