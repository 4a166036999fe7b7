// The dialogue with the client on one side and the engine on the other.
#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <chrono>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "companion/best_line.h"
#include "companion/engine_process.h"
#include "companion/game.h"
#include "companion/options.h"
#include "companion/search_plan.h"
#include "companion/words.h"

namespace companion {

// A `go` of the client that has no `bestmove` yet.
struct Search {
  Game game;
  GoLimits limits;
  SearchPlan plan;
  std::size_t replies = 0;  // the legal moves
  std::size_t stage = 0;
  bool held = false;       // infinite or pondering: no answer but on stop or ponderhit
  bool from_book = false;  // the engine answers without a search
  bool concluded = false;  // the engine has said its last word
  bool retried = false;    // the engine has died once over it
  bool told_a_line = false;
  int depth_told = 0;                         // the greatest
  std::uint64_t nodes_before = 0, nodes = 0;  // of earlier stages, of this one
  std::chrono::steady_clock::time_point since;
  BestLine best;
};

class Session {
 public:
  // How the session speaks to the world.
  struct Voices {
    std::function<void(const std::string&)> say;   // a line for the client
    std::function<void(const std::string&)> fail;  // the engine was never to be had: the reason
    std::function<void()> leave;                   // the client has ended the session
  };

  Session(boost::asio::io_context& io, const std::string& engine, Voices voices);

  void start();                        // starts the engine, in place of the one before
  void hear(const std::string& line);  // a line of the client
  void end_of_input();

 private:
  // What the engine is about. One that is lost is sought again at the next go.
  enum class Engine { starting, ready, thinking, abandoned, lost };

  // Lines of the client.
  bool must_wait(const std::string& command) const;
  void put_off(Words words);
  void obey(const std::string& command, std::span<const std::string> rest);
  void identify();
  void set_option(std::span<const std::string> words);
  void new_game();
  void take_position(std::span<const std::string> words);
  void go(std::span<const std::string> words);
  void ponder_hit();
  void stop();
  void leave();

  // The search.
  void answer_without_moves();
  void wait_for_the_clock();
  bool waits_for_the_engine() const { return search_ && !search_->concluded; }
  bool nodes_are_spent() const;
  bool needs_no_more() const;
  bool enough(const InfoLine& info) const;
  void conclude();
  void answer();
  static void bring_up_to_date(Search& search, InfoLine& info);
  static InfoLine closing_line(Search& search, InfoLine line);

  // The engine.
  void ask();
  void apply(const Settings& wanted);
  Settings settings_for(const Stage& stage) const;
  void hear_engine(const std::string& line);
  void hear_start(const std::string& line);
  void hear_info(const std::string& line);
  void tell(const InfoLine& info);
  void tell_of_the_move(const InfoLine& info);
  void hear_bestmove(const std::string& line);
  void engine_ended();
  void lose(const std::string& reason);
  void do_without_the_engine();
  void engine_is_ready();
  void abandon();

  Voices voices_;
  EngineProcess process_;
  boost::asio::steady_timer due_, grace_;

  Options options_;
  std::vector<std::string> names_;  // the engine's id lines
  bool knows_the_engine_ = false;   // its first reply to `uci` is complete
  std::vector<Words> early_;        // commands of the client from before that
  bool quits_ = false;              // the client has said quit

  std::optional<Game> game_ = Game{};  // the position held; nothing when it cannot be played
  std::optional<Search> search_;
  int searches_ = 0;

  Engine engine_ = Engine::starting;
  Settings given_;                    // what the engine's options are set to
  std::vector<std::string> buttons_;  // pressed, but not passed on yet
  bool white_root_ = false;           // the root colour that the engine holds
  int owed_ = 0;                      // bestmoves that the engine has not given yet
  int deaths_ = 0;                    // of the engine since it last gave one
};

}  // namespace companion
