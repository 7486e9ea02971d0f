#pragma once

// What a computer player decides in its turn: which die to play, which
// vehicle, how many companies to load, where to go or what to shoot, and how
// to answer the questions a move puts. It never applies a rule of its own:
// each candidate is tried on a copy of the board through the same calls the
// board's clicks make (PickOwnVehicle, CampLoadClicks, ClickDestination), and
// only what those accept is ever chosen. The computer player's driver then
// makes the same clicks on the real game.

#include "board/BoardState.h"

#include <array>
#include <cstdint>
#include <optional>
#include <random>
#include <vector>

namespace vk {

enum class ComputerLevel {
    Random,  // any accepted action, picked at random
    Greedy,  // the action whose outcome scores best for its own army
};

// One action as the player's clicks make it.
struct PlannedAction {
    int Slot = -1;        // the own vehicle double clicked
    int LoadClicks = 0;   // slow clicks on a camp vehicle before it leaves (companies, a commando's mine)
    int Field = -1;       // the destination field double clicked (road square, HQ, camp, island)
    int TargetSlot = -1;  // an enemy vehicle double clicked instead of a field: a shot
    bool LoadFlag = true; // the answer to "Wilt u een vlag opladen?"
    bool LeaveMine = false; // the answer to "Wilt u de mijn afzetten op het vakje dat u verlaat?"
    bool operator==(const PlannedAction&) const = default;
};

// The turn's values the choice reads, as the game keeps them.
struct TurnSituation {
    int Side = 1;
    int Phase = 0;   // GamePhase: 4, 9 or 18 to choose a die; 5, 10, 14, 19, 23 to pick an action
    int Dice1 = 0;
    int Dice2 = 0;
    std::array<int, 2> ActVeh{-1, -1};
    std::array<int, 2> ActCode{-1, -1};
    std::array<int, 2> ActFrom{-1, -1};
};

class ComputerChoice {
public:
    ComputerChoice(ComputerLevel level, std::uint32_t seed);

    ComputerLevel Level() const { return level_; }

    // At phase 4: the die control to double click, 1 (Dice_1), 2 (Dice_2) or
    // 3 (Dices, both), or 0 to end the turn (cmdEindeBeurt). At 9 and 18:
    // 2 or 1 for the remaining die, or 0 to end the turn. 0 when no vehicle
    // can act on any die; the greedy player also ends the turn when every
    // action would leave its army worse off than it stands.
    int ChooseDie(const BoardState& state, const TurnSituation& turn);

    // At a vehicle-pick phase (5, 10, 14, 19, 23): the action for the
    // phase's die, or nothing when no vehicle can act (the driver then gives
    // the die back or ends the turn). The greedy player weighs the first
    // action of two (5, 14) by the best second action it leaves.
    std::optional<PlannedAction> ChooseAction(const BoardState& state, const TurnSituation& turn);

    // Every action the board's rules accept at a vehicle-pick phase, each with
    // the state it leaves. Exposed for tests and for the choices above.
    // Clicks that leave the same position count once (the first of them); a
    // camp vehicle leaves with at least one company (each loading its slow
    // clicks make); a destroyed vehicle and the one under the tse-tse are
    // never picked.
    struct Candidate {
        PlannedAction Action;
        BoardState After;
        // The turn after the action: the phase it leads to (9, 18 or 27) and
        // the words ActVeh, ActCode, ActFrom as the clicks left them.
        TurnSituation Next;
    };
    std::vector<Candidate> Candidates(const BoardState& state, const TurnSituation& turn) const;

    // How good a position is for `side`: flags home, flags aboard and their
    // way home, companies of each army in play and taken, vehicles lost, the
    // jeep's safety, prisoners. Higher is better.
    static double Score(const BoardState& state, int side);

    // A Personnel card to keep out of three (returns 1, 2 or 3: the card to
    // throw away): Vrijgeleide and Contra spionage are kept first. Of the
    // others the greedy player throws the last, the random player any one.
    int CardToThrowAway(const std::array<int, 3>& cards);

    // A Personnel card played before the roll: the miniature clicked (1 for
    // KK1, 2 for KK2) and what the card then asks to be picked.
    struct CardPlay {
        int HandSlot = 0;
        int Card = 0;
        int VehicleSlot = -1;  // the enemy vehicle double clicked (the jeep of a Hinderlaag)
        int Field = -1;        // the field double clicked (the mine of a Mijnopruimingsdienst)
        bool operator==(const CardPlay&) const = default;
    };

    // The card to play at the start of a turn, or nothing. Only the cards
    // whose effect the opponent's copy can carry out are played: Uitwisseling,
    // Militaire Politie, Mijnopruimingsdienst and a Hinderlaag on the enemy
    // jeep; the others make the receiving copy end with a fault. Each is tried
    // on a copy of the board through its effect: Greedy plays the one that
    // gains most, if it gains; Random plays a playable one now and then.
    // `hand` holds the two slots of the own hand, `count` how many are held.
    std::optional<CardPlay> ChooseCardToPlay(const BoardState& state, int side, const std::array<int, 2>& hand,
                                             int count);

private:
    ComputerLevel level_;
    std::mt19937 random_;
};

} // namespace vk
