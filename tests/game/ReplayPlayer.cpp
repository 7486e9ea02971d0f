#include "ReplayPlayer.h"

#include "TwoCopies.h"
#include "board/BoardTables.h"
#include "board/Movement.h"
#include "board/Picking.h"
#include "game/PhaseTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <deque>
#include <sstream>
#include <vector>

namespace vk::test {

namespace {

// A field the destination click accepts, and what the judge says of it.
struct Target {
    int Field = 0;
    bool Shot = false;
    bool Flag = false;
};

// Every field the destination click of `phase` accepts for the vehicle.
std::vector<Target> Destinations(const BoardState& board, int side, int slot, int phase, int dice1, int dice2)
{
    if (IsCampVehiclePhase(phase) && (phase != 25 || dice1 + dice2 == 6))
        return {Target{HQField(side)}};
    const int from = board.VehiclePos(side, slot);
    int steps = PhaseDie(phase) == 1 ? dice1 : PhaseDie(phase) == 2 ? dice2 : dice1 + dice2;
    const bool fromCamp = phase == 25;
    if (fromCamp)
        steps = (dice1 == 6 ? dice2 : dice1) + 1;
    std::vector<Target> targets;
    for (int to = 1; to <= kLastField; ++to) {
        const MoveVerdict verdict = JudgeMove(board, side, slot, from, to, steps, !fromCamp);
        if (verdict.Legal)
            targets.push_back(Target{to, verdict.ShootAllowed, verdict.FlagLoad});
    }
    return targets;
}

// A random slot, with infantry, the flag carriers, chosen more often.
int RandomSlot(Dice& rng)
{
    return rng(0, 2) == 0 ? rng(3, 5) : rng(0, 10);
}

// The die choice that leads to a phase that picks a vehicle.
PhaseEvent DieChoiceOf(int pickPhase)
{
    const int die = PhaseDie(pickPhase);
    return die == 1 ? PhaseEvent::Dice1 : die == 2 ? PhaseEvent::Dice2 : PhaseEvent::BothDice;
}

// The double click on the vehicle; for the jeep on its island now and then
// withdrawn and made again, which loads it once more.
VehiclePick Pick(BoardState& board, const ActionRecord& record, int side, int slot, int pickPhase, int dice1,
                 int dice2, Dice& rng)
{
    const VehiclePick pick = PickOwnVehicle(board, side, slot, pickPhase, dice1, dice2, record.ActVeh, record.ActCode);
    const bool island = board.VehiclePos(side, slot) == IslandField(side);
    if (pick == VehiclePick::FromField && island && board.PrisonCompanies(side) > 0 && rng(0, 1) == 1) {
        // The cancel goes back to the choice of the die, and the same die leads to the same pick.
        const int back = PhaseAfterCancel(pickPhase + 3);
        EXPECT_EQ(NextPhase(DieChoiceOf(pickPhase), back), pickPhase);
        EXPECT_EQ(PickOwnVehicle(board, side, slot, pickPhase, dice1, dice2, record.ActVeh, record.ActCode),
                  VehiclePick::FromField);
    }
    return pick;
}

// Slow clicks on the picked camp vehicle; now and then the pick is cancelled,
// which must hand everything back, and made again.
void LoadInCamp(BoardState& board, int side, int slot, Dice& rng)
{
    const auto load = [&] {
        CampLoadState state;
        bool fresh = true;
        for (int clicks = rng(0, 4) == 0 ? 0 : rng(1, 6); clicks > 0; --clicks)
            EXPECT_TRUE(CampLoadClick(board, state, fresh, side, slot, slot));
    };
    const BoardState picked = board;
    load();
    // A mine taken up earlier leaves MinePickup standing, and the cancel then
    // takes a mine from the store: that case has a test of its own.
    if (rng(0, 5) == 0 && !board.Verdict.MinePickup) {
        CancelCampPick(board, side, slot);
        EXPECT_EQ(GameDifference(picked, board), "") << "cancel of " << side << "/" << slot;
        EXPECT_EQ(board.PendingDraws, picked.PendingDraws);
        load();
    }
}

// Road steps from each field to the flag field of `side`.
std::array<int, kLastField + 1> StepsToFlag(int side)
{
    std::array<int, kLastField + 1> steps;
    steps.fill(1000);
    std::deque<int> queue{FlagField(side)};
    steps[static_cast<std::size_t>(FlagField(side))] = 0;
    while (!queue.empty()) {
        const int field = queue.front();
        queue.pop_front();
        for (int k = 0; k < 3; ++k) {
            const int next = FieldRoads(field, k);
            if (next >= 1 && next <= kLastField && steps[static_cast<std::size_t>(next)] == 1000) {
                steps[static_cast<std::size_t>(next)] = steps[static_cast<std::size_t>(field)] + 1;
                queue.push_back(next);
            }
        }
    }
    return steps;
}

// The target nearest to the flag field of `side`.
Target TowardsTheFlag(const std::vector<Target>& targets, int side)
{
    static const std::array<std::array<int, kLastField + 1>, 2> steps{StepsToFlag(1), StepsToFlag(2)};
    const auto& table = steps[static_cast<std::size_t>(side - 1)];
    return *std::min_element(targets.begin(), targets.end(), [&](const Target& a, const Target& b) {
        return table[static_cast<std::size_t>(a.Field)] < table[static_cast<std::size_t>(b.Field)];
    });
}

// Mostly a shot when there is one, then a flag, then infantry without a flag
// heads for the flag field; otherwise any field.
Target ChooseTarget(const BoardState& board, int side, int slot, const std::vector<Target>& targets, Dice& rng)
{
    std::vector<Target> shots;
    std::vector<Target> flags;
    for (const Target& t : targets) {
        if (t.Shot)
            shots.push_back(t);
        if (t.Flag)
            flags.push_back(t);
    }
    if (!shots.empty() && rng(0, 3) != 0)
        return shots[static_cast<std::size_t>(rng(0, static_cast<int>(shots.size()) - 1))];
    if (!flags.empty() && rng(0, 2) != 0)
        return flags[static_cast<std::size_t>(rng(0, static_cast<int>(flags.size()) - 1))];
    if (IsInfantrySlot(slot) && TagMarkText(board.VehicleTag(side, slot), slot) == "0" && rng(0, 3) != 0)
        return TowardsTheFlag(targets, side);
    return targets[static_cast<std::size_t>(rng(0, static_cast<int>(targets.size()) - 1))];
}

// A click on a field the rules don't take: nothing but the verdict changes.
void WrongClick(BoardState& board, ActionWords words, int side, int phase, const std::vector<Target>& targets,
                int dice1, int dice2, Dice& rng)
{
    const int field = rng(1, kLastField);
    for (const Target& t : targets)
        if (t.Field == field)
            return;
    const BoardState before = board;
    const auto result = ClickDestination(board, words, side, phase, field, dice1, dice2, {});
    EXPECT_EQ(result.What, DestinationResult::Kind::Ignored) << "phase " << phase << " field " << field;
    EXPECT_EQ(GameDifference(before, board), "");
}

bool AnyShot(const std::vector<Target>& targets)
{
    return std::any_of(targets.begin(), targets.end(), [](const Target& t) { return t.Shot; });
}

// Picks a vehicle that has somewhere to go, half of the time one that can
// shoot if there is one; its slot, or -1.
int PickActingVehicle(BoardState& board, ActionRecord& record, int side, int pickPhase, int dice1, int dice2,
                      Dice& rng, int& phase)
{
    const bool wantShot = rng(0, 1) == 1;
    int chosen = -1;
    int chosenPhase = -1;
    for (int attempt = 0; attempt < 40; ++attempt) {
        const int slot = RandomSlot(rng);
        BoardState probe = board;
        const VehiclePick pick =
            PickOwnVehicle(probe, side, slot, pickPhase, dice1, dice2, record.ActVeh, record.ActCode);
        if (pick == VehiclePick::Refused)
            continue;
        const int picked = pickPhase + (pick == VehiclePick::FromCamp ? 2 : 3);
        const std::vector<Target> targets = Destinations(probe, side, slot, picked, dice1, dice2);
        if (targets.empty() || (chosen >= 0 && !AnyShot(targets)))
            continue;
        chosen = slot;
        chosenPhase = picked;
        if (!wantShot || AnyShot(targets))
            break;
    }
    if (chosen < 0)
        return -1;
    phase = chosenPhase;
    const auto index = static_cast<std::size_t>(ActionIndexOfPhase(phase));
    record.ActVeh[index] = chosen;
    record.ActFrom[index] = board.VehiclePos(side, chosen);
    const VehiclePick expected = phase == pickPhase + 2 ? VehiclePick::FromCamp : VehiclePick::FromField;
    EXPECT_EQ(Pick(board, record, side, chosen, pickPhase, dice1, dice2, rng), expected);
    return chosen;
}

} // namespace

void PlayAction(BoardState& board, ActionRecord& record, int side, int pickPhase, int dice1, int dice2, Dice& rng,
                Sent& sent)
{
    int phase = -1;
    const int slot = PickActingVehicle(board, record, side, pickPhase, dice1, dice2, rng, phase);
    if (slot < 0)
        return;
    if (IsCampVehiclePhase(phase))
        LoadInCamp(board, side, slot, rng);
    sent.JeepAboard = board.VehicleCompanies(side, kJeepSlot);

    const auto index = static_cast<std::size_t>(ActionIndexOfPhase(phase));
    ActionWords words{record.ActVeh, record.ActCode, record.ActFrom};
    const std::vector<Target> targets = Destinations(board, side, slot, phase, dice1, dice2);
    if (rng(0, 3) == 0)
        WrongClick(board, words, side, phase, targets, dice1, dice2, rng);
    const Target target = ChooseTarget(board, side, slot, targets, rng);
    record.ActTo[index] = target.Field;
    bool flagYes = false;
    DestinationQuestions questions{[&] { return flagYes = rng(0, 3) != 0; }, [&] { return rng(0, 1) == 1; }};
    const int flagsBefore = board.FlagReserve(side);
    const DestinationResult result =
        ClickDestination(board, words, side, phase, target.Field, dice1, dice2, questions);

    const auto entry = FindActionPhase(phase);
    ASSERT_TRUE(entry.has_value());
    ASSERT_EQ(result.What, DestinationResult::Kind::Done) << "phase " << phase << " field " << target.Field;
    EXPECT_EQ(result.NextPhase, entry->DoneValue);
    EXPECT_EQ(entry->RecordIndex, static_cast<int>(index));
    sent.Message = MakeActionMessage(record, entry->RecordIndex, entry->DiceCode, board.Verdict.Heading,
                                     board.VehicleTag(side, slot));
    sent.FlagUntold = board.FlagReserve(side) < flagsBefore && sent.Message.Act != kActMoveLoadFlag;
    if (sent.FlagUntold) {
        EXPECT_TRUE(flagYes);
        EXPECT_EQ(index, 1u);
        EXPECT_EQ(record.ActCode[0], kActMoveLoadFlag);
    }
    sent.Phase = phase;
    sent.Done = true;
}

std::string Describe(const ActionMessage& m)
{
    std::ostringstream out;
    out << "DIRECT=" << m.Direct << " DICE=" << m.Dice << " VEH=" << m.Veh << " ACT=" << m.Act << " FROM=" << m.From
        << " TO=" << m.To << " VEHTAG=" << m.VehTag;
    return out.str();
}

} // namespace vk::test
