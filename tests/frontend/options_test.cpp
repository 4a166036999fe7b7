// Every option: what a setting does to its variables, which columns tell it, and that nothing else
// is touched. The mappings are written out by hand here, setting by setting.
#include "frontend/options.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "board/state.h"
#include "eval/knobs.h"
#include "frontend/book.h"
#include "frontend/line.h"
#include "frontend/report.h"
#include "memory/game_memory.h"
#include "memory/ply_tables.h"
#include "root/caps.h"
#include "root/first_ply.h"
#include "root/ladder.h"
#include "support/lab.h"
#include "tree/clock.h"
#include "tree/knobs.h"

namespace korvu {
namespace {

// All that options set, by name.
std::map<std::string, double> variables() {
  return {{"CPU", CPU},
          {"deep", deep},
          {"deepp", deepp},
          {"TC", TC},
          {"Tu", Tu},
          {"SEARCH_E", SEARCH_E},
          {"SEARCH_EE", SEARCH_EE},
          {"PVS", PVS},
          {"TURBO", TURBO},
          {"Positive_filter", Positive_filter},
          {"Positive_filterp", Positive_filterp},
          {"positfilter", positfilter},
          {"Negative_filter", Negative_filter},
          {"Negative_filterp", Negative_filterp},
          {"negatfilter", negatfilter},
          {"VERTICAL_filt", VERTICAL_filt},
          {"LMR", LMR},
          {"NULL_MOVE", NULL_MOVE},
          {"Temperamento", Temperamento},
          {"agres", agres},
          {"agresprxrei", agresprxrei},
          {"agreschrei", agreschrei},
          {"empp", empp},
          {"matrix", matrix},
          {"EXTRA_EVAL", EXTRA_EVAL},
          {"EXTRA_EVALL", EXTRA_EVALL},
          {"PM", PM},
          {"MOB", MOB},
          {"roque_v", roque_v},
          {"extradef", extradef},
          {"MQ", MQ},
          {"OwnBook", OwnBook},
          {"HASH1", HASH1},
          {"HASHf", HASHf},
          {"FULL_inf", FULL_inf},
          {"CHESS_960", CHESS_960}};
}

void send(const std::string& line) {
  in = line;
  aplica_opcoes();
}

void set(const std::string& name, const std::string& value) {
  send("setoption name " + name + " value " + value);
}

struct Row {
  std::string name;
  std::vector<std::string> variables;
  double start;
  std::vector<std::pair<std::string, double>> settings;
  std::vector<std::string> ignored;
};

const std::vector<std::pair<std::string, double>> check = {
    {"false", 0}, {"true", 1}, {"f", 0}, {"tomorrow", 1}};
const std::vector<std::string> not_a_check = {"1", "True", "yes", ""};
const std::vector<std::pair<std::string, double>> nine_is_ten = {
    {"0", 0}, {"1", 1}, {"2", 2}, {"3", 3},  {"4", 4},  {"5", 5},
    {"6", 6}, {"7", 7}, {"8", 8}, {"9", 10}, {"12", 1}, {"95", 10}};
const std::vector<std::pair<std::string, double>> nine_is_nine = {{"0", 0}, {"1", 1}, {"4", 4},
                                                                  {"8", 8}, {"9", 9}, {"10", 1}};
const std::vector<std::pair<std::string, double>> schemes = {
    {"off", 0}, {"full", 3}, {"auto", 2}, {"manual", 1}};
const std::vector<std::pair<std::string, double>> margins = {
    {"0", 0}, {"1", 10}, {"2", 33}, {"3", 32}, {"4", 50}, {"5", 90}, {"6", 110}};
const std::vector<std::string> not_a_digit = {"-1", "x", "", " 5"};

const std::vector<Row>& rows() {
  static const std::vector<Row> all = {
      {"CPU power level",
       {"CPU"},
       2,
       {{"extreme", 5}, {"high", 1}, {"low", 3}, {"medium", 2}},
       {"x", "5", ""}},
      {"Deep",
       {"deep", "deepp"},
       17,
       {{"0", 0},
        {"1", 1},
        {"2", 3},
        {"3", 5},
        {"4", 7},
        {"5", 9},
        {"6", 11},
        {"7", 13},
        {"8", 15},
        {"9", 17},
        {"17", 1}},
       not_a_digit},
      {"Time control", {"TC"}, 1, check, not_a_check},
      {"Time usage",
       {"Tu"},
       3,
       {{"1", 1}, {"2", 2}, {"3", 3}, {"4", 4}, {"5", 5}, {"6", 6}, {"7", 7}, {"8", 8}, {"9", 10}},
       {"0", "-1", "x"}},
      {"Search extension", {"SEARCH_E", "SEARCH_EE"}, 1, check, not_a_check},
      {"PVS", {"PVS"}, 1, check, not_a_check},
      {"Turbo search", {"TURBO"}, 1, check, not_a_check},
      {"Positive float filter",
       {"Positive_filter", "Positive_filterp"},
       2,
       schemes,
       {"x", "1", ""}},
      {"Positive float filter level", {"positfilter"}, 100, margins, {"7", "9", "x"}},
      {"Negative float filter",
       {"Negative_filter", "Negative_filterp"},
       2,
       schemes,
       {"x", "1", ""}},
      {"Negative float filter level", {"negatfilter"}, 100, margins, {"7", "9", "x"}},
      {"Vertical filter", {"VERTICAL_filt"}, 1, check, not_a_check},
      {"Lmr", {"LMR"}, 1, check, not_a_check},
      {"Null move filter",
       {"NULL_MOVE"},
       2,
       {{"off", 0}, {"normal", 1}, {"plus", 2}},
       {"x", "1", ""}},
      {"Temperament",
       {"Temperamento"},
       3,
       {{"consistent", 2}, {"positional", 1}, {"dynamic", 3}},
       {"x", "1", ""}},
      {"Aggressiveness", {"agres"}, 1, nine_is_nine, not_a_digit},
      {"Attack to King proximity", {"agresprxrei"}, 1, nine_is_nine, not_a_digit},
      {"Attack by check to King", {"agreschrei"}, 1, nine_is_ten, not_a_digit},
      {"Confidence",
       {"empp"},
       -5,
       {{"1", 10},
        {"2", 7},
        {"3", 5},
        {"4", 3},
        {"5", 0},
        {"6", -3},
        {"7", -5},
        {"8", -7},
        {"9", -10}},
       {"0", "-1", "x"}},
      {"Positional matrices", {"matrix"}, 1, check, not_a_check},
      {"Extra evaluation", {"EXTRA_EVAL", "EXTRA_EVALL"}, 1, check, not_a_check},
      {"Positional relevance", {"PM"}, 5, nine_is_ten, not_a_digit},
      {"Mobility", {"MOB"}, 5, nine_is_ten, not_a_digit},
      {"Castle value", {"roque_v"}, 3, nine_is_ten, not_a_digit},
      {"Extra definition", {"extradef"}, 1, check, not_a_check},
      {"Material quociente", {"MQ"}, 5, nine_is_ten, not_a_digit},
      {"Own book", {"OwnBook"}, 1, check, not_a_check},
      {"Memory", {"HASH1"}, 1, check, not_a_check},
      {"Deep memory", {"HASHf"}, 1, check, not_a_check},
      {"Full info", {"FULL_inf"}, 1, check, not_a_check},
      {"UCI_Chess960", {"CHESS_960"}, 0, check, not_a_check},
  };
  return all;
}

TEST(Options, AreThirtyThreeOfWhichTwoAreButtons) {
  EXPECT_EQ(opcoes().size(), 33U);
  EXPECT_EQ(rows().size(), 31U);
  std::size_t found = 0;
  for (const Row& row : rows())
    for (const Opcao& o : opcoes()) found += o.nome == row.name;
  EXPECT_EQ(found, 31U) << "each row of this test names one option";
}

TEST(Options, StartAtTheirDefaults) {
  const auto now = variables();
  for (const Row& row : rows())
    for (const std::string& v : row.variables) EXPECT_EQ(now.at(v), row.start) << row.name;
}

// The filter levels print 5 but start at a margin that no setting gives.
TEST(Options, PrintTheDefaultThatTheyHave) {
  for (const Opcao& o : opcoes()) {
    if (o.tipo == Tipo::button || o.nome.ends_with("filter level")) continue;
    const auto before = variables();
    set(std::string(o.nome), std::string(o.padrao));
    EXPECT_EQ(variables(), before) << o.nome;
  }
}

TEST(Options, SetTheirVariablesAndNoOthers) {
  for (const Row& row : rows())
    for (const auto& [setting, value] : row.settings) {
      auto expected = variables();
      for (const std::string& v : row.variables) expected[v] = value;
      set(row.name, setting);
      EXPECT_EQ(variables(), expected) << row.name << " value " << setting;
    }
}

TEST(Options, LeaveTheirVariablesAtAnUnknownSetting) {
  for (const Row& row : rows()) {
    set(row.name, row.settings.front().first);
    const auto before = variables();
    for (const std::string& setting : row.ignored) {
      set(row.name, setting);
      EXPECT_EQ(variables(), before) << row.name << " value " << setting;
    }
  }
}

TEST(Options, IgnoreALineWithOneBlankMore) {
  for (const Row& row : rows()) {
    const auto before = variables();
    for (const auto& [setting, value] : row.settings) {
      send("setoption  name " + row.name + " value " + setting);
      send("setoption name  " + row.name + " value " + setting);
      send("setoption name " + row.name + " value  " + setting);
    }
    EXPECT_EQ(variables(), before) << row.name;
  }
}

TEST(Options, IgnoreALineThatEndsBeforeTheSetting) {
  for (const Row& row : rows()) {
    const auto before = variables();
    for (const char* end : {"", " ", " value", " value "}) {
      send("setoption name " + row.name + end);
      EXPECT_EQ(variables(), before) << row.name << end;
    }
  }
}

// Fingerprint columns from the first of the line, and the column of the setting, by hand.
struct Fingerprint {
  std::string name;
  std::vector<std::pair<std::size_t, char>> columns;
  std::size_t value_column;
  std::string setting;
  std::string variable;
  double value;
};

const std::vector<Fingerprint>& fingerprints() {
  static const std::vector<Fingerprint> all = {
      {"CPU power level", {{15, 'C'}, {17, 'U'}, {20, 'o'}}, 37, "e", "CPU", 5},
      {"Deep", {{15, 'D'}, {17, 'e'}, {20, 'v'}}, 26, "1", "deepp", 1},
      {"Time control", {{15, 'T'}, {17, 'm'}, {20, 'c'}}, 34, "f", "TC", 0},
      {"Time usage", {{15, 'T'}, {17, 'm'}, {20, 'u'}}, 32, "7", "Tu", 7},
      {"Search extension", {{15, 'S'}, {16, 'e'}, {17, 'a'}}, 38, "f", "SEARCH_EE", 0},
      {"PVS", {{15, 'P'}, {16, 'V'}, {17, 'S'}}, 25, "f", "PVS", 0},
      {"Turbo search", {{15, 'T'}, {17, 'r'}, {21, 's'}}, 34, "f", "TURBO", 0},
      {"Positive float filter",
       {{15, 'P'}, {17, 's'}, {20, 'i'}, {37, 'v'}},
       43,
       "f",
       "Positive_filterp",
       3},
      {"Positive float filter level",
       {{15, 'P'}, {17, 's'}, {20, 'i'}, {37, 'l'}},
       49,
       "2",
       "positfilter",
       33},
      {"Negative float filter",
       {{15, 'N'}, {17, 'g'}, {20, 'i'}, {37, 'v'}},
       43,
       "f",
       "Negative_filterp",
       3},
      {"Negative float filter level",
       {{15, 'N'}, {17, 'g'}, {20, 'i'}, {37, 'l'}},
       49,
       "2",
       "negatfilter",
       33},
      {"Vertical filter", {{15, 'V'}, {17, 'r'}, {20, 'c'}}, 37, "f", "VERTICAL_filt", 0},
      {"Lmr", {{15, 'L'}, {17, 'r'}}, 25, "f", "LMR", 0},
      {"Null move filter", {{15, 'N'}, {17, 'l'}, {20, 'm'}}, 38, "o", "NULL_MOVE", 0},
      {"Temperament", {{15, 'T'}, {17, 'm'}, {20, 'r'}}, 33, "p", "Temperamento", 1},
      {"Aggressiveness", {{15, 'A'}, {17, 'g'}, {20, 's'}}, 36, "7", "agres", 7},
      {"Attack to King proximity", {{15, 'A'}, {17, 't'}, {22, 't'}}, 46, "7", "agresprxrei", 7},
      {"Attack by check to King", {{15, 'A'}, {17, 't'}, {22, 'b'}}, 45, "7", "agreschrei", 7},
      {"Confidence", {{15, 'C'}, {17, 'n'}, {20, 'd'}}, 32, "1", "empp", 10},
      {"Positional matrices", {{15, 'P'}, {17, 's'}, {20, 'i'}}, 41, "f", "matrix", 0},
      {"Extra evaluation", {{15, 'E'}, {17, 't'}, {21, 'e'}}, 38, "f", "EXTRA_EVALL", 0},
      {"Positional relevance", {{15, 'P'}, {17, 's'}, {20, 'i'}, {26, 'r'}}, 42, "7", "PM", 7},
      {"Mobility", {{15, 'M'}, {17, 'b'}, {20, 'i'}}, 30, "7", "MOB", 7},
      {"Castle value", {{15, 'C'}, {17, 's'}, {20, 'e'}}, 34, "7", "roque_v", 7},
      {"Extra definition", {{15, 'E'}, {17, 't'}, {21, 'd'}}, 38, "f", "extradef", 0},
      {"Material quociente", {{15, 'M'}, {17, 't'}, {20, 'i'}, {26, 'o'}}, 40, "7", "MQ", 7},
      {"Own book", {{15, 'O'}, {17, 'n'}, {21, 'o'}}, 30, "f", "OwnBook", 0},
      {"Memory", {{15, 'M'}, {17, 'm'}, {20, 'y'}}, 28, "f", "HASH1", 0},
      {"Deep memory", {{15, 'D'}, {17, 'e'}, {20, 'm'}}, 33, "f", "HASHf", 0},
      {"Full info", {{15, 'F'}, {17, 'l'}, {20, 'i'}}, 31, "f", "FULL_inf", 0},
      {"UCI_Chess960", {{15, 'U'}, {17, 'I'}, {20, 'h'}}, 34, "t", "CHESS_960", 1},
  };
  return all;
}

// A line of question marks but for the fingerprint and the setting.
std::string bare_line(const Fingerprint& f) {
  std::string line(f.value_column, '?');
  line[0] = 's';
  line[8] = line[10] = 'n';
  for (const auto& [column, letter] : f.columns) line[column] = letter;
  return line + f.setting;
}

TEST(Options, AreToldByTheirFingerprintAlone) {
  EXPECT_EQ(fingerprints().size(), 31U);
  for (const Fingerprint& f : fingerprints()) {
    const auto before = variables();
    ASSERT_NE(before.at(f.variable), f.value) << f.name;
    send(bare_line(f));
    EXPECT_EQ(variables().at(f.variable), f.value) << f.name;
  }
}

TEST(Options, NeedEveryLetterOfTheirFingerprint) {
  for (const Fingerprint& f : fingerprints()) {
    std::vector<std::size_t> needed = {0, 8, 10};
    for (const auto& [column, letter] : f.columns) needed.push_back(column);
    const auto before = variables();
    for (const std::size_t column : needed) {
      std::string line = bare_line(f);
      line[column] = '!';
      send(line);
      EXPECT_EQ(variables(), before) << f.name << " without column " << column;
    }
  }
}

// Three rows look at the columns of this line, each for a setting in a column of its own.
TEST(Options, OneLineMaySetSeveral) {
  std::string line(44, '?');
  line[0] = 's';
  line[8] = line[10] = 'n';
  line[15] = 'P';
  line[17] = 's';
  line[20] = 'i';
  line[26] = 'r';
  line[37] = 'v';
  line[41] = 'f';  // Positional matrices
  line[42] = '7';  // Positional relevance
  line[43] = 'm';  // Positive float filter
  auto expected = variables();
  expected["matrix"] = 0;
  expected["PM"] = 7;
  expected["Positive_filter"] = expected["Positive_filterp"] = 1;
  send(line);
  EXPECT_EQ(variables(), expected);
}

// --- In the dialogue ---

using Lines = std::vector<std::string>;

// Games that no book knows, and a go line that searches the root moves alone.
const std::string fen_with_moves = "position fen 7k/p7/8/8/8/8/7P/K7 w - - 0 1 moves";
const std::string white_to_play = fen_with_moves + " a1a2 h8h7";
const std::string black_to_play = fen_with_moves + " a1a2";
const std::string shortest_go = "go wtime 9 btime 9";

void restore_defaults() {
  for (const Opcao& o : opcoes())
    if (o.tipo != Tipo::button) set(std::string(o.nome), std::string(o.padrao));
  positfilter = negatfilter = 100;
}

// Of an option with a working copy the one that searches leave alone.
const std::string& setting_slot(const Row& row) {
  return row.variables.back();
}

// Sets the option to something else between the other lines of a dialogue; has it been heard?
bool heard(const Row& row, Lines lines, const Lines& after) {
  const double before = variables().at(setting_slot(row));
  const auto other = std::ranges::find_if(
      row.settings, [&](const auto& setting) { return setting.second != before; });
  lines.push_back("setoption name " + row.name + " value " + other->first);
  lines.insert(lines.end(), after.begin(), after.end());
  lab::dialogue(lines);
  const double now = variables().at(setting_slot(row));
  EXPECT_TRUE(now == before || now == other->second);
  return now == other->second;
}

TEST(OptionsInTheDialogue, AreHeardBeforeTheFirstPositionAndAfterEachAnswerOnly) {
  for (const Row& row : rows()) {
    SCOPED_TRACE(row.name);
    EXPECT_TRUE(heard(row, {}, {}));
    EXPECT_FALSE(heard(row, {white_to_play}, {shortest_go}));
    EXPECT_FALSE(heard(row, {black_to_play}, {shortest_go}));
    EXPECT_TRUE(heard(row, {white_to_play, shortest_go}, {}));
    EXPECT_TRUE(heard(row, {black_to_play, shortest_go}, {}));
  }
  restore_defaults();
}

TEST(OptionsInTheDialogue, OutliveEveryPositionLine) {
  for (const Row& row : rows()) {
    const auto other = std::ranges::find_if(
        row.settings, [&](const auto& setting) { return setting.second != row.start; });
    set(row.name, other->first);
  }
  set("Deep", "0");
  const auto before = variables();
  const std::string fen = "position fen 4k3/p7/8/8/8/8/7P/4K3 w - - 0 1";
  for (const Lines& lines :
       {Lines{"ucinewgame"}, Lines{"uci"}, Lines{"position startpos"},
        Lines{"position startpos moves e2e4"}, Lines{white_to_play, shortest_go},
        Lines{fen, shortest_go}, Lines{fen + " moves e1e2", shortest_go}}) {
    lab::dialogue(lines);
    const auto now = variables();
    const std::set<std::string> working = {"SEARCH_E", "EXTRA_EVAL", "Positive_filter",
                                           "Negative_filter"};
    for (const auto& [name, value] : now) {
      if (working.contains(name)) continue;
      EXPECT_EQ(value, before.at(name)) << name << " after " << lines.front();
    }
  }
  restore_defaults();
}

TEST(Options, ButtonClearMemoryForgetsTheAnswers) {
  limpa_memoria();
  hash_mem_build(1000);
  ASSERT_EQ(indice_da_memoria(), 1);
  send("setoption name Clear memory");
  EXPECT_EQ(indice_da_memoria(), 0);
}

TEST(Options, ButtonClearDeepMemoryEmptiesAllSixTables) {
  const auto fill = [](TabelaDeLance& t) {
    t.abre({});
    t.fecha(1);
  };
  const auto indices = [] {
    return std::vector<int>{tabela_de<3, Cor::b>().indice(), tabela_de<3, Cor::p>().indice(),
                            tabela_de<4, Cor::b>().indice(), tabela_de<4, Cor::p>().indice(),
                            tabela_de<5, Cor::b>().indice(), tabela_de<5, Cor::p>().indice()};
  };
  fill(tabela_de<3, Cor::b>());
  fill(tabela_de<3, Cor::p>());
  fill(tabela_de<4, Cor::b>());
  fill(tabela_de<4, Cor::p>());
  fill(tabela_de<5, Cor::b>());
  fill(tabela_de<5, Cor::p>());
  ASSERT_EQ(indices(), std::vector<int>(6, 1));
  send("setoption name Clear deep memory");
  EXPECT_EQ(indices(), std::vector<int>(6, 0));
}

// Presses a button by a line; has something been forgotten?
template <class F>
bool forgets(const std::string& line, F records) {
  guarda_linha("x");
  hash_mem_build(1000);
  tabela_de<4, Cor::p>().abre({});
  tabela_de<4, Cor::p>().fecha(1);
  send(line);
  return records() == 0;
}

TEST(Options, ButtonsAreToldByTheirFingerprint) {
  const auto answers = [] { return indice_da_memoria(); };
  const auto positions = [] { return tabela_de<4, Cor::p>().indice(); };
  std::string line(22, '?');
  line[0] = 's';
  line[8] = line[10] = 'n';
  line[15] = 'C';
  line[17] = 'e';
  line[21] = 'm';
  EXPECT_TRUE(forgets(line, answers));
  EXPECT_FALSE(forgets(line, positions));
  for (const std::size_t column : {0U, 8U, 10U, 15U, 17U, 21U}) {
    std::string spoilt = line;
    spoilt[column] = '!';
    EXPECT_FALSE(forgets(spoilt, answers)) << column;
  }
  line[21] = 'd';
  EXPECT_TRUE(forgets(line, positions));
  EXPECT_FALSE(forgets(line, answers));
  for (const std::size_t column : {0U, 8U, 10U, 15U, 17U, 21U}) {
    std::string spoilt = line;
    spoilt[column] = '!';
    EXPECT_FALSE(forgets(spoilt, positions)) << column;
  }
  EXPECT_FALSE(forgets("setoption name  Clear memory", answers)) << "one blank more";
  EXPECT_FALSE(forgets("setoption name  Clear deep memory", positions));
}

}  // namespace
}  // namespace korvu
