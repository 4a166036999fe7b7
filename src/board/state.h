// The process-wide slots of the position and of the line under search. Everything is static and is
// overwritten in place: what a slot holds from the last time is part of the engine's behaviour.
#pragma once

#include "board/types.h"

namespace korvu {

inline constexpr int ultimo_lance = 23;  // the last ply that makes moves
inline constexpr int ultimo_no = 24;     // the last ply that has a value

// --- Board and flags, per ply. Index 0 is the game itself. ---

// 1 when the right is lost. A rook's flag is set by any rook that leaves the file, on any rank.
struct Movidos {
  std::uint8_t R_b_jm, R_p_jm;      // the king has moved
  std::uint8_t T_b_a_jm, T_b_h_jm;  // a White rook has left the a-file, the h-file
  std::uint8_t T_p_a_jm, T_p_h_jm;  // a Black rook has
};

// 1 on the file where a pawn of that colour has just made a double step: pba to pbh, ppa to pph.
struct Duplos {
  std::array<std::uint8_t, 8> pb, pp;
};

alignas(64) inline std::array<Tabuleiro, ultimo_lance + 1> tabd{};  // board after N plies
inline std::array<Movidos, ultimo_lance + 1> jm_D{};                // castling bytes after N plies
inline std::array<Duplos, ultimo_lance + 1> duplos_D{};  // en-passant bytes after N plies

inline Tabuleiro& tab = tabd[0];      // the position of the game, root of each search
inline Movidos& jm = jm_D[0];         // R_b_jm ... T_p_h_jm of the game
inline Duplos& duplos = duplos_D[0];  // pba ... pph of the game

alignas(64) inline Tabuleiro tab2{};   // the position after the last trial move; never restored
alignas(64) inline Tabuleiro tab2t{};  // private board of the freedom tests

// --- Positions of the game ---

inline constexpr int maximo_de_posicoes = 1000;
inline std::array<Tabuleiro, maximo_de_posicoes> tabr1{};  // [k]: the position after k + 1 plies
inline int nb = 0;                   // number of the game move being replayed, from 1
inline std::uint8_t joga_com_b = 0;  // root colour: 1 White, 0 Black

// --- Castling marks and king squares ---

inline int roque_b = 0, roque_p = 0;  // non-zero below a castling on the line, more when early
inline int p_x_Rb = 4, p_y_Rb = 0;    // White king's file and rank in the last position tested
inline int p_x_Rp = 4, p_y_Rp = 7;    // Black king's

// --- Material, in score units, kings' 110 included ---

inline float materialba = 0, materialpa = 0;          // totals in tab
inline float materialmaiorb = 0, materialmaiorp = 0;  // without pawns and king
inline float materialflot0 = 0;                       // root side's total minus the other's
inline int npecasb = 0, npecasp = 0;                  // men without the king
inline int npecasbdp = 0, npecaspdp = 0;              // men without king and pawns
inline int peca = 0;                                  // signed code taken by the last game move
inline std::array<float, ultimo_lance + 1> materialb{}, materialp{};  // totals after N plies
inline int promocao = 0;                                              // 80 when the move promotes
inline int ppassado = 0;  // 10 when the move takes en passant

// --- Moves ---

// aa, bb: file and rank left; cc, dd: file and rank reached; -1 in all four: no move.
struct Lance {
  int aa, bb, cc, dd;
  friend bool operator==(const Lance&, const Lance&) = default;
};
inline constexpr Lance sem_lance = {-1, -1, -1, -1};

struct Texto {
  char A, B, C, D;
};

constexpr char letra_da_coluna(int x) {
  return static_cast<char>('a' + x);
}
constexpr char letra_da_fila(int y) {
  return static_cast<char>('1' + y);
}
constexpr Texto texto_do_lance(int x1, int y1, int x2, int y2) {
  return {letra_da_coluna(x1), letra_da_fila(y1), letra_da_coluna(x2), letra_da_fila(y2)};
}

// The move to play, or the move received: from-file, from-rank, to-file, to-rank.
struct Jogada {
  int a, b, c, d;
};
inline Jogada jogada{};           // a, b, c, d
inline Texto jogada_texto{};      // A, B, C, D: the same as letters
inline Lance melhor = sem_lance;  // aab, bbb, ccb, ddb: best root move of this search
// Stored quiet move of ply N, the latest that cut there: aaN ... ddN (ply 1: aa1v ... dd1v).
inline std::array<Lance, ultimo_lance + 1> guardado{};
// Stored capture of ply N: aaNg ... ddNg, in the other order: aa, bb is the square of the victim,
// cc, dd that of the taker. Ply 1 (aa1 ... dd1) alone keeps it in the order from, to.
inline std::array<Lance, ultimo_lance + 1> guardado_g{};

inline std::array<Texto, 8> linha{};  // A0 ... D7: the first eight moves of the running line

inline char PR = '0', PRs = '0', PRe = '0';  // promotion letter: to print, wanted, received; or '0'

// --- Values, per ply. Always from the root side's point of view ---

inline constexpr float infinito = 16500;        // start value: -infinito even, +infinito odd
inline constexpr float limiar_de_mate = 3300;   // from here on a score, or its negative, is a mate
inline constexpr float sem_melhor = -10000000;  // E before a root move has a score

inline std::array<float, ultimo_no + 1> alfa{};  // even plies and 0: the root side maximises
inline std::array<float, ultimo_no + 1> beta{};  // odd plies: the opponent minimises
inline float& alfa0 = alfa[0];
inline float& beta1 = beta[1];
// Cut flags, numbered by the ply of the node's parent: corte_beta by odd, corte_alfa by even.
inline std::array<std::uint8_t, ultimo_no + 1> corte_alfa{}, corte_beta{};
inline std::array<std::uint8_t, ultimo_lance + 1> X_D{};  // 1 until a reply has improved the node
inline std::array<std::uint8_t, ultimo_lance + 1> XEQUE_MATE = [] {
  std::array<std::uint8_t, ultimo_lance + 1> um{};
  um.fill(1);
  return um;
}();  // 1 until the king's loop finds the mover's king not attacked

// Caps: an upper limit on what a ply may reach. [0] is MAXcut, the root's. MAXcutt: saved copies.
inline std::array<float, ultimo_lance + 1> MAXcut{}, MAXcutt{};

// --- Scores of the root ---

inline float ALFA0 = 0;                // score of the previous pass
inline float BETA1 = 0;                // value of the shallow search of this root move
inline float E = 0;                    // best score of this root search
inline float EP = 0;                   // score to report with the final move
inline int emp = 0;                    // score of a draw
inline int emppp = 0;                  // emp as it was at the start of the search
inline int empp = -5;                  // the option "Confidence"
inline std::uint8_t corte_MAXcut = 0;  // the pass is over: a cap was met or time is up

// --- Depth and counters ---

inline int deep = 17;                        // last ply of the present line
inline int deepp = 17;                       // the option "Deep"; 17 stands for no limit
inline int DEEP = 0;                         // deep at the start of the pass
inline int ddep = 0, dddep = 0;              // deepest ply of this root move, of this search
inline int nd = 0;                           // ply of the node that last began its moves
inline std::uint32_t nodes = 0;              // legal moves tried
inline int curr = 0;                         // ordinal of the root move in work
inline std::array<int, 10> currN{};          // moves of ply N-1 tried so far, N 2 to 9
inline std::array<std::uint8_t, 10> LmrT{};  // a late reduction below this parent was wrong
inline std::array<std::uint8_t, 10> AmrT{};  // an early one was

// --- Result bytes of the rule tests ---

inline std::uint8_t Y = 0;         // the mover's king is attacked on tab2
inline std::uint8_t XEQUE = 0;     // the other king is attacked on tab2
inline std::uint8_t XM = 0;        // the king on the asked square is attacked
inline std::uint8_t R = 0;         // the castling is forbidden by an attack
inline std::uint8_t YY = 0;        // the freedom test found the mover's king attacked
inline std::uint8_t EMPAT = 0;     // draw by lack of material at the last leaf
inline std::uint8_t pempate = 0;   // the position on tab2 repeats one of the game
inline std::uint8_t pempatee = 0;  // repetition tests are switched on
inline std::uint8_t TEST1IID = 0;  // the root move takes part in this pass

// --- Pass kinds ---

inline std::uint8_t SCAN1 = 0;      // only the remembered best move is admitted
inline std::uint8_t SCANT = 0;      // every move but that one
inline std::uint8_t deeppromo = 0;  // a search below the first ply is running
inline std::uint8_t PVSm = 0;       // the capped search of the first ply is running
inline std::uint8_t PVSm2 = 0;      // a null-window search of ply 2 is running
inline std::uint8_t LMRtest = 0;    // a second search of the root move is running

inline std::uint8_t CHESS_960 = 0;  // the option "UCI_Chess960"

// --- Picking by colour ---

template <Cor cor>
float& material(int n) {
  return cor == Cor::b ? materialb[static_cast<std::size_t>(n)]
                       : materialp[static_cast<std::size_t>(n)];
}
template <Cor cor>
float& material_da_raiz() {
  return cor == Cor::b ? materialba : materialpa;
}
template <Cor cor>
float& material_maior() {
  return cor == Cor::b ? materialmaiorb : materialmaiorp;
}
template <Cor cor>
int& npecas() {
  return cor == Cor::b ? npecasb : npecasp;
}
template <Cor cor>
int& npecasdp() {
  return cor == Cor::b ? npecasbdp : npecaspdp;
}
template <Cor cor>
int& roque() {
  return cor == Cor::b ? roque_b : roque_p;
}
template <Cor cor>
int& rei_x() {
  return cor == Cor::b ? p_x_Rb : p_x_Rp;
}
template <Cor cor>
int& rei_y() {
  return cor == Cor::b ? p_y_Rb : p_y_Rp;
}

template <Cor cor>
constexpr std::uint8_t& rei_moveu(Movidos& m) {
  return cor == Cor::b ? m.R_b_jm : m.R_p_jm;
}
template <Cor cor>
constexpr std::uint8_t& torre_a_moveu(Movidos& m) {
  return cor == Cor::b ? m.T_b_a_jm : m.T_p_a_jm;
}
template <Cor cor>
constexpr std::uint8_t& torre_h_moveu(Movidos& m) {
  return cor == Cor::b ? m.T_b_h_jm : m.T_p_h_jm;
}
template <Cor cor>
constexpr auto& duplo(Duplos& f) {
  return cor == Cor::b ? f.pb : f.pp;
}
template <Cor cor>
constexpr const auto& duplo(const Duplos& f) {
  return cor == Cor::b ? f.pb : f.pp;
}

}  // namespace korvu
