#include "companion/session.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "companion/question.h"

namespace companion {
namespace {

using std::chrono::steady_clock;

// A search that nobody waits for may end by itself within this time; the engine then keeps what it
// remembers. A new one is there within milliseconds, so that the next search does not wait for
// that.
constexpr Milliseconds grace{100};

// For the reply to `uci`, and when the client has already left.
constexpr Milliseconds patience_at_the_start{10000}, patience_after_quit{2000};

// So often the engine is started anew without a search that it has ended. A go begins to count
// anew.
constexpr int deaths_borne = 5;

constexpr std::string_view commands[] = {"uci",  "isready",   "setoption",  "position", "go",
                                         "stop", "ponderhit", "ucinewgame", "quit"};

}  // namespace

Session::Session(boost::asio::io_context& io, const std::string& engine, Voices voices)
    : voices_(std::move(voices)),
      process_(
          io, engine, [this](const std::string& line) { hear_engine(line); },
          [this] { engine_ended(); }),
      due_(io),
      grace_(io) {}

// --- Lines of the client ---

// Words before the command are passed over. Behind quit nothing counts.
void Session::hear(const std::string& line) {
  if (quits_) return;
  const Words words = words_of(line);
  const auto command = std::ranges::find_if(words, [](const std::string& word) {
    return std::ranges::find(commands, word) != std::end(commands);
  });
  if (command == words.end()) return;
  quits_ = *command == "quit";
  if (must_wait(*command))
    put_off({command, words.end()});
  else
    obey(*command, {command + 1, words.end()});
}

// All does until the engine's options are known, but isready is answered unless a uci is not yet.
bool Session::must_wait(const std::string& command) const {
  if (knows_the_engine_) return false;
  return command != "isready" ||
         std::ranges::any_of(early_, [](const Words& words) { return words[0] == "uci"; });
}

// Who quits early waits for what was asked for, but not long.
void Session::put_off(Words words) {
  early_.push_back(std::move(words));
  if (!quits_) return;
  const auto wants_an_answer = [](const Words& w) { return w[0] == "uci" || w[0] == "go"; };
  if (std::ranges::none_of(early_, wants_an_answer)) {
    leave();
    return;
  }
  grace_.expires_after(patience_after_quit);
  grace_.async_wait([this](auto error) {
    if (!error) leave();
  });
}

void Session::obey(const std::string& command, std::span<const std::string> rest) {
  if (command == "uci") identify();
  if (command == "isready") voices_.say("readyok");
  if (command == "setoption") set_option(rest);
  if (command == "position") take_position(rest);
  if (command == "go") go(rest);
  if (command == "stop") stop();
  if (command == "ponderhit") ponder_hit();
  if (command == "ucinewgame") new_game();
  if (command == "quit") leave();
}

// What was asked for is answered before the end.
void Session::end_of_input() {
  hear("stop");
  hear("quit");
}

void Session::leave() {
  search_.reset();
  process_.end();
  voices_.leave();
}

void Session::identify() {
  for (const std::string& name : names_) voices_.say(name);
  for (const std::string& option : options_.offers()) voices_.say(option);
  voices_.say("uciok");
}

void Session::set_option(std::span<const std::string> words) {
  const Options::Answer answer = options_.set(words);
  if (answer.what == Options::Answer::pressed) buttons_.push_back(answer.name);
  if (answer.what == Options::Answer::refused)
    voices_.say("info string option " + answer.name + " has no such setting");
}

void Session::take_position(std::span<const std::string> words) {
  ReadGame read = read_game(words);
  const std::string kept = read.readable ? "" : "; the one before is kept";
  if (!read.complaint.empty()) voices_.say("info string " + read.complaint + kept);
  if (read.readable) game_ = std::move(read.game);
}

// The engine's game memory would answer out of the game before.
void Session::new_game() {
  game_ = Game{};
  if (options_.engine_has_button(clear_memory)) buttons_.emplace_back(clear_memory);
}

void Session::go(std::span<const std::string> words) {
  stop();
  ++searches_;
  Search& s = search_.emplace();
  s.since = steady_clock::now();
  s.limits = read_go(words);
  for (const std::string& complaint : s.limits.complaints) voices_.say("info string " + complaint);
  if (game_) s.game = *game_;
  s.plan = plan_search(s.limits, s.game.now.white_to_move(), options_.deep_setting(),
                       Milliseconds(options_.overhead_ms()));
  s.held = s.limits.infinite || s.limits.ponder;
  s.replies = game_ ? s.game.now.legal_moves().size() : 0;
  if (s.replies == 0) {
    answer_without_moves();
    return;
  }
  // It stands until the engine has looked at it too: a first line may be of any move.
  if (const auto choice = plain_choice(s.game.now)) s.best.conclude(*choice);
  if (!s.held) wait_for_the_clock();
  if (engine_ == Engine::lost) deaths_ = 0;
  if (engine_ == Engine::lost || engine_ == Engine::abandoned) start();
  if (engine_ == Engine::ready) ask();
}

void Session::ponder_hit() {
  if (!search_ || !search_->limits.ponder) return;
  search_->limits.ponder = false;
  search_->held = search_->limits.infinite;
  if (search_->held) return;
  if (search_->concluded)
    answer();
  else
    wait_for_the_clock();
}

void Session::stop() {
  if (search_) answer();
}

// --- The search ---

void Session::answer_without_moves() {
  voices_.say(search_->game.now.in_check() ? "info depth 0 score mate 0"
                                           : "info depth 0 score cp 0");
  conclude();
}

void Session::wait_for_the_clock() {
  if (!search_->plan.patience) return;
  due_.expires_after(*search_->plan.patience);
  due_.async_wait([this, number = searches_](auto error) {
    if (!error && search_ && number == searches_) answer();
  });
}

bool Session::nodes_are_spent() const {
  const auto& limit = search_->plan.nodes;
  return limit && !search_->held && search_->nodes_before + search_->nodes >= *limit;
}

// Has a move by the clock been thought about enough, now that a search has ended?
bool Session::needs_no_more() const {
  const auto& enough = search_->plan.enough;
  if (!enough || search_->held) return false;
  return search_->replies == 1 || steady_clock::now() - search_->since >= *enough;
}

// Does this line end the search, by the limits of the client?
bool Session::enough(const InfoLine& info) const {
  if (search_->held) return false;
  const SearchPlan& plan = search_->plan;
  const auto& score = info.score;
  // The first search is always completed.
  if (search_->stage > 0 && nodes_are_spent()) return true;
  return plan.mate && score && score->mate && score->value > 0 && score->value <= *plan.mate;
}

void Session::conclude() {
  search_->concluded = true;
  if (!search_->held) answer();
}

// Nodes and time of all that was done for the client's go, and the depth of the search in work:
// some lines are of an earlier one, and the engine's last line of a mate tells how far off that is.
void Session::bring_up_to_date(Search& search, InfoLine& info) {
  const auto elapsed = std::chrono::duration_cast<Milliseconds>(steady_clock::now() - search.since);
  const auto time = static_cast<std::uint64_t>(elapsed.count());
  const std::uint64_t nodes = search.nodes_before + search.nodes;
  search.depth_told = std::max(search.depth_told, info.depth.value_or(0));
  if (info.depth) info.put("depth", std::to_string(search.depth_told));
  info.put("nodes", std::to_string(nodes));
  info.put("time", std::to_string(time));
  if (time > 0)
    info.put("nps", std::to_string(1000 * nodes / time));
  else
    info.drop("nps");
}

// The line of the move as it is repeated at the end.
InfoLine Session::closing_line(Search& search, InfoLine line) {
  for (const char* of_its_time : {"currmove", "currmovenumber", "hashfull"}) line.drop(of_its_time);
  bring_up_to_date(search, line);
  return line;
}

// The one answer to a go. A search that is ended before its time closes with the line of its move.
void Session::answer() {
  due_.cancel();
  Search search = std::move(*search_);
  search_.reset();
  const auto move = search.best.move();
  const auto& line = search.best.line();
  std::string text = "bestmove " + (move ? move->text() : "(none)");
  if (!search.concluded && line) voices_.say(closing_line(search, *line).text());
  if (options_.ponders() && line && line->pv.size() > 1) text += " ponder " + line->pv[1].text();
  voices_.say(text);
  if (!search.concluded && engine_ == Engine::thinking) abandon();
}

// --- The engine ---

void Session::start() {
  engine_ = Engine::starting;
  white_root_ = false;
  owed_ = 0;
  try {
    process_.start();
  } catch (const std::system_error& e) {
    lose(std::string("the engine does not start: ") + e.what());
    return;
  }
  process_.send("uci");
  grace_.expires_after(patience_at_the_start);
  grace_.async_wait([this](auto error) {
    if (!error && engine_ == Engine::starting) lose("the engine does not answer");
  });
}

Settings Session::settings_for(const Stage& stage) const {
  Settings wanted = options_.chosen();
  if (stage.deep) wanted[deep] = std::to_string(*stage.deep);
  // An answer out of the game memory would be one to a shorter search.
  if (stage.untimed) wanted[time_control] = wanted[memory] = "false";
  // Who asks without an end wants to see lines, not a move out of the book.
  if (search_->limits.infinite) wanted[own_book] = "false";
  return wanted;
}

void Session::apply(const Settings& wanted) {
  for (auto& [name, setting] : given_) {
    const std::string& now = wanted.at(name);
    if (setting == now) continue;
    process_.send(setoption(name, now));
    setting = now;
  }
}

// Asks the engine for the stage of the search. A go that it does not wait for is dropped by it.
void Session::ask() {
  Search& s = *search_;
  const Stage& stage = s.plan.stages[s.stage];
  const Settings wanted = settings_for(stage);
  const auto book = wanted.find(own_book);
  const bool with_book = book != wanted.end() && book->second == "true";
  const Question question = question_for(s.game, with_book, white_root_);
  for (const std::string& button : std::exchange(buttons_, {})) process_.send(setoption(button));
  if (question.primer) {
    Settings primed = wanted;
    primed[own_book] = "true";
    apply(primed);
    process_.send(*question.primer);
    ++owed_;
  }
  apply(wanted);
  process_.send(question.position);
  process_.send(stage.go);
  ++owed_;
  white_root_ = question.white_root_after;
  s.from_book = with_book && in_the_book(s.game);
  engine_ = Engine::thinking;
}

void Session::hear_engine(const std::string& line) {
  const bool bestmove = line.starts_with("bestmove");
  switch (engine_) {
    case Engine::starting:
      hear_start(line);
      break;
    case Engine::thinking:
      if (bestmove && --owed_ == 0) hear_bestmove(line);
      if (!bestmove && owed_ == 1) hear_info(line);
      break;
    case Engine::abandoned:
      if (bestmove && --owed_ == 0) engine_is_ready();
      break;
    case Engine::ready:
    case Engine::lost:
      break;
  }
}

void Session::hear_start(const std::string& line) {
  if (!knows_the_engine_) {
    if (line.starts_with("id ")) names_.push_back(line);
    options_.learn(line);
  }
  if (line != "uciok") return;
  given_ = options_.defaults();
  if (!std::exchange(knows_the_engine_, true))
    for (const Words& early : std::exchange(early_, {}))
      obey(early[0], std::span(early).subspan(1));
  engine_is_ready();
}

void Session::engine_is_ready() {
  grace_.cancel();
  engine_ = Engine::ready;
  if (waits_for_the_engine()) ask();
}

void Session::hear_info(const std::string& line) {
  auto info = read_info(line, search_->game.now);
  // Its lines of speed alone are of its own search, and of the time that it knows.
  if (!info || !info->depth) return;
  Search& s = *search_;
  const bool running = info->has("currmove");
  if (running && !s.held && s.plan.depth && info->depth > s.plan.depth) {
    answer();
    return;
  }
  s.nodes = info->nodes.value_or(s.nodes);
  bring_up_to_date(s, *info);
  if (running)
    tell_of_the_move(*info);
  else
    tell(*info);
  if (enough(*info)) answer();
}

void Session::tell(const InfoLine& info) {
  search_->told_a_line = search_->told_a_line || !info.pv.empty();
  if (search_->told_a_line) voices_.say(info.text());
}

// Interfaces take the last line of moves for the engine's opinion. So score and moves of a root
// move are told when it is the best so far; when it makes another the best, that one's follow.
void Session::tell_of_the_move(const InfoLine& info) {
  Search& s = *search_;
  const bool another = s.best.hear(info);
  const auto& best = s.best.line();
  const bool itself = another && best->pv.front() == info.pv.front();
  tell(itself ? info : info.progress());
  if (another && !itself) tell(closing_line(s, *best));
}

void Session::hear_bestmove(const std::string& line) {
  engine_ = Engine::ready;
  deaths_ = 0;
  Search& s = *search_;
  const Words words = words_of(line);
  if (words.size() > 1)
    if (const auto move = legal_move(s.game.now, words[1])) s.best.conclude(*move);
  s.nodes_before += std::exchange(s.nodes, 0);
  const auto& best = s.best.line();
  const bool mates = best && best->score->mate && best->score->value > 0;
  ++s.stage;
  if (s.from_book || mates || nodes_are_spent() || needs_no_more() ||
      s.stage == s.plan.stages.size())
    conclude();
  else
    ask();
}

void Session::abandon() {
  engine_ = Engine::abandoned;
  grace_.expires_after(grace);
  grace_.async_wait([this](auto error) {
    if (!error && engine_ == Engine::abandoned) start();
  });
}

// By itself, and unasked. One that has never answered is not the engine at all.
void Session::engine_ended() {
  const std::string what = "the engine has ended by itself";
  if (!knows_the_engine_ || ++deaths_ > deaths_borne) {
    lose(what);
    return;
  }
  voices_.say("info string " + what + " and is started anew");
  const bool over_the_search = engine_ == Engine::thinking;
  if (over_the_search) search_->nodes_before += std::exchange(search_->nodes, 0);
  start();
  if (over_the_search && waits_for_the_engine() && std::exchange(search_->retried, true))
    do_without_the_engine();
}

void Session::lose(const std::string& reason) {
  engine_ = Engine::lost;
  grace_.cancel();
  process_.end();
  if (!knows_the_engine_) {
    voices_.fail(reason);
    return;
  }
  voices_.say("info string " + reason + "; without it moves are guesses");
  if (waits_for_the_engine()) do_without_the_engine();
}

// The best move that is known is legal, and comes when it may.
void Session::do_without_the_engine() {
  if (search_->held)
    search_->concluded = true;
  else
    answer();
}

}  // namespace companion
