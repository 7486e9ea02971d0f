#include "ComputerGames.h"

#include "board/Picking.h"

#include <algorithm>
#include <ctime>

namespace vk::testing {

namespace {

using Clock = std::chrono::steady_clock;

std::chrono::nanoseconds ThreadCpuTime()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

double Ms(std::chrono::nanoseconds time) { return std::chrono::duration<double, std::milli>(time).count(); }

// The phase that picks a vehicle after the die control `die` at phase `phase`.
int PickPhase(int phase, int die)
{
    if (phase == 4)
        return die == 1 ? 5 : die == 2 ? 14 : die == 3 ? 23 : -1;
    if (phase == 9 && die == 2)
        return 10;
    if (phase == 18 && die == 1)
        return 19;
    return -1;
}

} // namespace

TurnSituation Turn(int side, int phase, int dice1, int dice2)
{
    TurnSituation turn;
    turn.Side = side;
    turn.Phase = phase;
    turn.Dice1 = dice1;
    turn.Dice2 = dice2;
    return turn;
}

bool ApplyPlannedAction(BoardState& state, TurnSituation& turn, const PlannedAction& action)
{
    const int side = turn.Side;
    const int phase = turn.Phase;
    const VehiclePick pick =
        PickOwnVehicle(state, side, action.Slot, phase, turn.Dice1, turn.Dice2, turn.ActVeh, turn.ActCode);
    if (pick == VehiclePick::Refused)
        return false;
    const auto index = static_cast<std::size_t>(ActionIndexOfPhase(phase));
    turn.ActVeh[index] = action.Slot;
    turn.ActFrom[index] = state.VehiclePos(side, action.Slot);
    turn.Phase = phase + (pick == VehiclePick::FromCamp ? 2 : 3);
    if (pick == VehiclePick::FromCamp)
        CampLoadClicks(state, side, action.Slot, action.LoadClicks);
    int field = action.Field;
    if (action.TargetSlot >= 0)
        field = state.VehiclePos(OtherSide(side), action.TargetSlot);
    DestinationQuestions questions{[&action] { return action.LoadFlag; }, [&action] { return action.LeaveMine; }};
    const DestinationResult result = ClickDestination(state, ActionWords{turn.ActVeh, turn.ActCode, turn.ActFrom},
                                                      side, turn.Phase, field, turn.Dice1, turn.Dice2, questions);
    if (result.What != DestinationResult::Kind::Done)
        return false;
    turn.Phase = result.NextPhase;
    return true;
}

bool PlayTurn(BoardState& state, ComputerChoice& player, int side, int dice1, int dice2,
              DecisionTimes* times)
{
    DecisionTimes spent;
    const auto timed = [&spent](auto&& call) {
        const auto start = Clock::now();
        const std::chrono::nanoseconds startCpu = ThreadCpuTime();
        auto value = call();
        const std::chrono::nanoseconds took = Clock::now() - start;
        const std::chrono::nanoseconds tookCpu = ThreadCpuTime() - startCpu;
        spent.Turn += took;
        spent.LongestCall = std::max(spent.LongestCall, took);
        spent.TurnCpu += tookCpu;
        spent.LongestCallCpu = std::max(spent.LongestCallCpu, tookCpu);
        return value;
    };
    TurnSituation turn;
    turn.Side = side;
    turn.Phase = 4;
    turn.Dice1 = dice1;
    turn.Dice2 = dice2;
    bool done = true;
    while (turn.Phase == 4 || turn.Phase == 9 || turn.Phase == 18) {
        const int die = timed([&] { return player.ChooseDie(state, turn); });
        const int pickPhase = PickPhase(turn.Phase, die);
        if (pickPhase < 0)
            break;
        turn.Phase = pickPhase;
        const std::optional<PlannedAction> action = timed([&] { return player.ChooseAction(state, turn); });
        // No action for the die: the die is given back and the turn ends.
        if (!action)
            break;
        if (!ApplyPlannedAction(state, turn, *action)) {
            done = false;
            break;
        }
    }
    if (times)
        *times = spent;
    return done;
}

GameResult PlayGame(ComputerChoice& army1, ComputerChoice& army2, std::mt19937& dice, int turnLimit, int timed)
{
    GameResult result;
    BoardState state;
    ResetNewGame(state);
    std::uniform_int_distribution<int> die(1, 6);
    for (int turnNumber = 1; turnNumber <= turnLimit; ++turnNumber) {
        const int side = turnNumber % 2 == 1 ? 1 : 2;
        state.PendingDraws = 0;
        const int dice1 = die(dice);
        const int dice2 = die(dice);
        DecisionTimes spent;
        const bool done = PlayTurn(state, side == 1 ? army1 : army2, side, dice1, dice2, &spent);
        result.Turns = turnNumber;
        if (side == timed) {
            result.TurnMs.push_back(Ms(spent.Turn));
            result.CallMs.push_back(Ms(spent.LongestCall));
            result.TurnCpuMs.push_back(Ms(spent.TurnCpu));
            result.CallCpuMs.push_back(Ms(spent.LongestCallCpu));
        }
        if (!done) {
            result.Refused = true;
            break;
        }
        if (state.ReserveCompanies(OtherSide(side)) == kCompaniesPerArmy || state.FlagHome(side) == kFlagsPerArmy) {
            result.Winner = side;
            break;
        }
    }
    for (int side = 1; side <= 2; ++side) {
        const auto army = static_cast<std::size_t>(side - 1);
        result.FlagsHome[army] = state.FlagHome(side);
        result.Reserve[army] = state.ReserveCompanies(side);
        result.Prison[army] = state.PrisonCompanies(side);
        for (int slot = 0; slot < kVehicleSlots; ++slot)
            result.Destroyed[army] += state.VehiclePos(side, slot) == kOutOfGame ? 1 : 0;
    }
    return result;
}

} // namespace vk::testing
