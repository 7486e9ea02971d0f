#include "game/ComputerChoice.h"

#include "board/BoardTables.h"
#include "board/MinesAndFlags.h"
#include "board/Picking.h"
#include "board/Shooting.h"
#include "board/VehicleTag.h"
#include "cards/DeckMoves.h"
#include "cards/PersonnelEffects.h"
#include "cards/PersonnelPicks.h"
#include "game/PhaseTable.h"

#include <algorithm>

namespace vk {

namespace {

// --- Distances over the road graph ------------------------------------------

constexpr int kNodes = kLastField + 1;  // fields 0..118
constexpr int kFar = 255;

// The road graph's links of each field 0..118 (-1 none), read once.
using LinkTable = std::array<std::array<int, 3>, kNodes>;

const LinkTable& RoadLinks()
{
    static const LinkTable links = [] {
        LinkTable table{};
        for (int field = 0; field < kNodes; ++field)
            for (int k = 0; k < 3; ++k)
                table[static_cast<std::size_t>(field)][static_cast<std::size_t>(k)] = FieldRoads(field, k);
        return table;
    }();
    return links;
}

using FieldDistances = std::array<std::uint8_t, kNodes>;

// The fewest links from `from` to every field, over the fields not closed.
FieldDistances Search(int from, const std::array<bool, kNodes>& closed)
{
    const LinkTable& links = RoadLinks();
    FieldDistances distance;
    distance.fill(static_cast<std::uint8_t>(kFar));
    distance[static_cast<std::size_t>(from)] = 0;
    std::array<int, kNodes> waiting{};
    std::size_t head = 0;
    std::size_t tail = 0;
    waiting[tail++] = from;
    while (head < tail) {
        const int here = waiting[head++];
        const auto next = static_cast<std::uint8_t>(distance[static_cast<std::size_t>(here)] + 1);
        for (const int there : links[static_cast<std::size_t>(here)]) {
            if (there < 0 || closed[static_cast<std::size_t>(there)])
                continue;
            auto& d = distance[static_cast<std::size_t>(there)];
            if (d != kFar)
                continue;
            d = next;
            waiting[tail++] = there;
        }
    }
    return distance;
}

int DistanceAt(const FieldDistances& distance, int field)
{
    return field >= 0 && field < kNodes ? distance[static_cast<std::size_t>(field)] : kFar;
}

// Every walk the movement rules accept keeps to the links of the road graph
// (FieldRoads, strategic links included) and never enters the other army's
// camp, so a walk of N steps never ends farther than N of these links from
// where it began: the table bounds which destinations a die can reach at all,
// and from how far a shot can come.
class ReachBound {
public:
    static const ReachBound& Get()
    {
        static const ReachBound table;
        return table;
    }

    int Links(int side, int from, int to) const
    {
        if (from < 0 || from >= kNodes)
            return kFar;
        return DistanceAt(table_[static_cast<std::size_t>(side - 1)][static_cast<std::size_t>(from)], to);
    }

private:
    ReachBound()
    {
        for (int side = 1; side <= 2; ++side) {
            std::array<bool, kNodes> closed{};
            closed[static_cast<std::size_t>(CampField(OtherSide(side)))] = true;
            for (int from = 0; from < kNodes; ++from)
                table_[static_cast<std::size_t>(side - 1)][static_cast<std::size_t>(from)] = Search(from, closed);
        }
    }

    std::array<std::array<FieldDistances, kNodes>, 2> table_{};
};

// The road squares where mines lie, in a fixed order: all that the way to a
// field depends on besides the army and the field.
using MineFields = std::array<int, 2 * kMinesPerArmy>;

MineFields MinesOnRoads(const BoardState& state)
{
    MineFields fields{};
    std::size_t i = 0;
    for (int side = 1; side <= 2; ++side)
        for (int mine = 0; mine < kMinesPerArmy; ++mine) {
            const int field = state.MinePos(side, mine);
            fields[i++] = IsRoadField(field) ? field : 0;
        }
    return fields;
}

// The links from every field to `target` for a vehicle of `side` as the
// board stands, for the score: around the mines, which no walk passes, and
// out of everything of the other army's (camp, HQ, island), which a walk to a
// road square may not pass. The road graph runs both ways, so one search from
// the target serves every field.
FieldDistances SearchWay(const MineFields& mines, int side, int target)
{
    const int enemy = OtherSide(side);
    std::array<bool, kNodes> closed{};
    closed[static_cast<std::size_t>(kOutOfGame)] = true;
    closed[static_cast<std::size_t>(CampField(enemy))] = true;
    closed[static_cast<std::size_t>(HQField(enemy))] = true;
    closed[static_cast<std::size_t>(IslandField(enemy))] = true;
    for (const int field : mines)
        if (field != 0)
            closed[static_cast<std::size_t>(field)] = true;
    return Search(target, closed);
}

// The mines seldom move between the positions one decision scores: the last
// few ways are kept, per thread.
const FieldDistances& WayTo(const BoardState& state, int side, int target)
{
    struct Kept {
        MineFields Mines{};
        int Side = 0;
        int Target = -1;
        FieldDistances Way{};
    };
    thread_local std::array<Kept, 8> kept;
    thread_local std::size_t nextSlot = 0;
    const MineFields mines = MinesOnRoads(state);
    for (const Kept& entry : kept)
        if (entry.Side == side && entry.Target == target && entry.Mines == mines)
            return entry.Way;
    Kept& entry = kept[nextSlot];
    nextSlot = (nextSlot + 1) % kept.size();
    entry = Kept{mines, side, target, SearchWay(mines, side, target)};
    return entry.Way;
}

// The most steps the die (or dice) of a phase can walk: a bound, never the
// rule; the rule is ClickDestination's.
int StepsBound(int phase, int dice1, int dice2)
{
    switch (PhaseDie(phase)) {
    case 1: return dice1;
    case 2: return dice2;
    case 3: return dice1 + dice2;
    default: return 0;
    }
}

// --- The score ---------------------------------------------------------------

// Weights of Score. A flag home is worth more than anything on the way to it,
// a flag aboard more than the companies and vehicles around it.
constexpr double kWin = 1'000'000.0;
constexpr double kFlagHome = 1000.0;
constexpr double kFlagAboard = 350.0;
constexpr double kFlagAboardStep = 15.0;  // per link nearer to the own camp
constexpr double kFlagSeekStep = 4.0;     // per link of an infantry nearer to its flag field
constexpr double kRescueStep = 3.0;       // per prisoner aboard the jeep, per link nearer to the camp
constexpr int kSpan = 40;                 // distances count up to this many links
constexpr double kReserve = 40.0;         // a company sent to the reserve (the way to a win)
constexpr double kPrisoner = 25.0;        // a company in prison
constexpr double kVehicleLost = 60.0;
constexpr double kAboard = 4.0;           // a company aboard a vehicle outside the camp
constexpr double kDeployed = 6.0;         // a vehicle out of its camp
constexpr double kMineOnBoard = 8.0;      // a mine lying on the roads, in anybody's way
constexpr double kNearThreat = 0.35;      // the chance of a shot from 1 to 6 links away
constexpr double kFarThreat = 0.15;       // ... from 7 to 12 links away
constexpr double kOwnThreat = 0.25;       // how much the own shots of next turn count

int Nearer(int distance) { return std::max(0, kSpan - std::min(distance, kSpan)); }

bool OnTheBoard(int position) { return position != kOutOfGame; }

bool CarriesMark(const BoardState& state, int side, int slot)
{
    return SlotHasMark(slot) && TagMarkValue(state.VehicleTag(side, slot), slot) > 0;
}

double FlagAboardValue(const FieldDistances& toCamp, int position)
{
    return kFlagAboard + kFlagAboardStep * Nearer(DistanceAt(toCamp, position));
}

// What `side` loses when its vehicle `slot` is hit: a vehicle with one
// company, a flag or a mine aboard, or the jeep is destroyed (its companies to
// the reserve, a flag back to the flag reserve); any other loses one company.
double LossWhenHit(const BoardState& state, const FieldDistances& toCamp, int side, int slot)
{
    const int companies = state.VehicleCompanies(side, slot);
    const bool carries = CarriesMark(state, side, slot);
    if (companies != 1 && !carries && slot != kJeepSlot)
        return kPrisoner + kAboard;
    double loss = kVehicleLost + (kReserve + kAboard) * std::max(companies, 0);
    if (IsInfantrySlot(slot) && carries)
        loss += FlagAboardValue(toCamp, state.VehiclePos(side, slot));
    return loss;
}

// The expected loss of `side` to the shots of the other army in its next
// turn: each own vehicle on a road square that an enemy vehicle may shoot
// (ShotPermitted) from 12 links or less, weighed by how likely the dice bring
// a shooter there.
double Exposure(const BoardState& state, const FieldDistances& toCamp, int side)
{
    const int enemy = OtherSide(side);
    // A shot is judged without blocking: only the walk's length counts.
    const ReachBound& reach = ReachBound::Get();
    double expected = 0.0;
    for (int slot = 0; slot < kVehicleSlots; ++slot) {
        const int field = state.VehiclePos(side, slot);
        if (!IsRoadField(field))
            continue;
        const int cell = state.BoardCell(field);
        double safe = 1.0;
        for (int shooter = 0; shooter < kVehicleSlots; ++shooter) {
            const int from = state.VehiclePos(enemy, shooter);
            if (!IsRoadField(from) && from != HQField(enemy))
                continue;
            const int links = reach.Links(enemy, from, field);
            if (links > 12 || !ShotPermitted(state, enemy, shooter, cell, true))
                continue;
            safe *= 1.0 - (links <= 6 ? kNearThreat : kFarThreat);
        }
        if (safe < 1.0)
            expected += (1.0 - safe) * LossWhenHit(state, toCamp, side, slot);
    }
    return expected;
}

// What the army of `side` holds, without the threats: flags, companies,
// vehicles, and the way its flags and prisoners still have to go.
double Holdings(const BoardState& state, const FieldDistances& toCamp, int side)
{
    const int enemy = OtherSide(side);
    double value = kFlagHome * state.FlagHome(side);
    value += kReserve * state.ReserveCompanies(enemy) + kPrisoner * state.PrisonCompanies(enemy);
    const bool flagsLeft = state.FlagReserve(side) > 0;
    const FieldDistances toFlags = flagsLeft ? WayTo(state, side, FlagField(side)) : FieldDistances{};
    for (int slot = 0; slot < kVehicleSlots; ++slot) {
        const int position = state.VehiclePos(side, slot);
        if (!OnTheBoard(position)) {
            value -= kVehicleLost;
            continue;
        }
        const int companies = state.VehicleCompanies(side, slot);
        if (position != CampField(side)) {
            value += kAboard * std::max(companies, 0);
            if (slot != kJeepSlot)
                value += kDeployed;
        }
        if (IsInfantrySlot(slot)) {
            if (CarriesMark(state, side, slot))
                value += FlagAboardValue(toCamp, position);
            else if (flagsLeft)
                value += kFlagSeekStep * Nearer(DistanceAt(toFlags, position));
        }
        if (slot == kJeepSlot && companies > 0 && position != IslandField(side))
            value += kRescueStep * companies * Nearer(DistanceAt(toCamp, position));
    }
    return value;
}

int MinesOnTheRoads(const BoardState& state)
{
    int count = 0;
    for (int side = 1; side <= 2; ++side)
        for (int mine = 0; mine < kMinesPerArmy; ++mine)
            count += IsRoadField(state.MinePos(side, mine)) ? 1 : 0;
    return count;
}

bool HasWon(const BoardState& state, int side)
{
    return state.FlagHome(side) >= kFlagsPerArmy || state.ReserveCompanies(OtherSide(side)) >= kCompaniesPerArmy;
}

// --- Candidates ----------------------------------------------------------------

// The answers given to a destination's questions, and whether each was put.
struct Asked {
    bool LoadFlag = true;
    bool LeaveMine = false;
    bool FlagAsked = false;
    bool MineAsked = false;
    DestinationQuestions Questions()
    {
        return DestinationQuestions{[this] {
                                        FlagAsked = true;
                                        return LoadFlag;
                                    },
                                    [this] {
                                        MineAsked = true;
                                        return LeaveMine;
                                    }};
    }
};

using Candidate = ComputerChoice::Candidate;

// One destination click of the picked vehicle on `scratch`. A click the rules
// do not take leaves the board as it was but for the judge's verdict, which
// is put back, so that the same scratch serves the next field; a click they
// take becomes a candidate, and the scratch starts again from `picked`.
bool TryDestination(const BoardState& picked, BoardState& scratch, const TurnSituation& words, int destinationPhase,
                    int field, int loadClicks, Asked& asked, std::vector<Candidate>& out)
{
    TurnSituation next = words;
    const DestinationResult result =
        ClickDestination(scratch, ActionWords{next.ActVeh, next.ActCode, next.ActFrom}, words.Side, destinationPhase,
                         field, words.Dice1, words.Dice2, asked.Questions());
    if (result.What != DestinationResult::Kind::Done) {
        scratch.Verdict = picked.Verdict;
        return false;
    }
    // Clicks that end alike are one candidate, the first: a camp vehicle
    // driven back into its camp unloads whatever it took, whichever it is;
    // a shooter stays where it stands, whichever shoots.
    const int slot = words.ActVeh[static_cast<std::size_t>(ActionIndexOfPhase(destinationPhase))];
    for (const Candidate& earlier : out)
        if (earlier.Action.Field == field && earlier.After == scratch) {
            scratch = picked;
            return true;
        }
    PlannedAction action;
    action.Slot = slot;
    action.LoadClicks = loadClicks;
    action.Field = field;
    action.LoadFlag = asked.LoadFlag;
    action.LeaveMine = asked.LeaveMine;
    int targetSide = 0;
    int targetSlot = -1;
    if (result.Action.Code == 2 && VehicleAtCell(picked, field, targetSide, targetSlot))
        action.TargetSlot = targetSlot;
    next.Phase = result.NextPhase;
    out.push_back(Candidate{action, std::move(scratch), next});
    scratch = picked;
    return true;
}

// Every destination of the picked vehicle, with every answer to the questions
// its move puts.
void AddDestinations(const BoardState& picked, const TurnSituation& words, int destinationPhase, int loadClicks,
                     std::vector<Candidate>& out)
{
    const int side = words.Side;
    const int slot = words.ActVeh[static_cast<std::size_t>(ActionIndexOfPhase(destinationPhase))];
    const int from = picked.VehiclePos(side, slot);
    const bool secondAction = ActionIndexOfPhase(destinationPhase) == 1;
    const int bound = StepsBound(words.Phase, words.Dice1, words.Dice2);
    const ReachBound& reach = ReachBound::Get();
    BoardState scratch = picked;
    for (int field = 1; field <= kLastField; ++field) {
        if (reach.Links(side, from, field) > bound)
            continue;
        // A jeep driven back to its island keeps its men aboard, and its next
        // escape adds the prisoners on top of them on the opponent's copy:
        // past three there is no picture for that jeep and that copy ends
        // with a fault.
        // The move gains nothing, so the computer never makes it.
        if (slot == kJeepSlot && field == IslandField(side))
            continue;
        // A flag taken aboard by the second action of a turn is written into
        // the first action's code, so the opponent's copy never loads it:
        // the flag would count on this copy alone, and a victory by it would
        // be a victory the opponent never sees. The computer takes flags with
        // the first action only.
        Asked first;
        first.LoadFlag = !secondAction;
        if (!TryDestination(picked, scratch, words, destinationPhase, field, loadClicks, first, out))
            continue;
        // The other answers, each on a fresh copy.
        for (const bool loadFlag : {true, false}) {
            for (const bool leaveMine : {false, true}) {
                const bool asFirst = loadFlag == first.LoadFlag && leaveMine == first.LeaveMine;
                if (asFirst || (loadFlag && secondAction) || (loadFlag != first.LoadFlag && !first.FlagAsked) ||
                    (leaveMine && !first.MineAsked))
                    continue;
                Asked other;
                other.LoadFlag = loadFlag;
                other.LeaveMine = leaveMine;
                TryDestination(picked, scratch, words, destinationPhase, field, loadClicks, other, out);
            }
        }
    }
}

// A camp vehicle: each loading that the slow clicks make (1 click is 1
// company; they go round, and a commando's alternate with its mine), then its
// destinations. The clicks stop at the first loading seen before.
void AddCampLoadings(const BoardState& picked, const TurnSituation& words, int destinationPhase,
                     std::vector<Candidate>& out)
{
    const int side = words.Side;
    const int slot = words.ActVeh[static_cast<std::size_t>(ActionIndexOfPhase(destinationPhase))];
    BoardState loaded = picked;
    CampLoadState load;
    bool fresh = true;
    std::vector<std::pair<int, bool>> seen;
    for (int clicks = 1; clicks <= 4 * kCompaniesPerArmy; ++clicks) {
        if (!CampLoadClick(loaded, load, fresh, side, slot, slot))
            return;
        const std::pair<int, bool> loading{loaded.VehicleCompanies(side, slot), load.MineAboard};
        if (std::find(seen.begin(), seen.end(), loading) != seen.end())
            return;
        seen.push_back(loading);
        AddDestinations(loaded, words, destinationPhase, clicks, out);
    }
}

// The index of the highest value. Ties are broken at random, so that equal
// moves do not always fall to the lowest slot and field.
std::size_t BestIndex(const std::vector<double>& values, std::mt19937& random)
{
    constexpr double kSame = 1e-9;
    std::size_t best = 0;
    int ties = 1;
    for (std::size_t i = 1; i < values.size(); ++i) {
        if (values[i] > values[best] + kSame) {
            best = i;
            ties = 1;
        } else if (values[i] > values[best] - kSame) {
            ++ties;
            if (std::uniform_int_distribution<int>(1, ties)(random) == 1)
                best = i;
        }
    }
    return best;
}

// The phase that picks a vehicle for a die chosen at 4, 9 or 18.
int PickPhaseOf(int choicePhase, int die)
{
    switch (choicePhase) {
    case 4: return die == 1 ? 5 : die == 2 ? 14 : 23;
    case 9: return 10;
    case 18: return 19;
    default: return -1;
    }
}

// The first action of two: the phase that picks the second one after it.
int SecondPickPhase(int phaseAfterFirst)
{
    return phaseAfterFirst == 9 ? 10 : phaseAfterFirst == 18 ? 19 : -1;
}

// --- The greedy player's look ahead ---------------------------------------------

// How many first actions of a two-dice turn are looked at with every second
// action after them: the best by their own outcome. The rest count with their
// own outcome alone, which keeps a decision short also when many camp
// vehicles may leave with many loadings.
constexpr std::size_t kLookAheadWidth = 12;

// The best a first action of two can lead to: the score of the better of
// its own outcome (the turn ended after it) and of each second action.
double BestOfTwo(const ComputerChoice& choice, const Candidate& first, int side, double own)
{
    double best = own;
    TurnSituation second = first.Next;
    second.Phase = SecondPickPhase(first.Next.Phase);
    if (second.Phase < 0)
        return best;
    for (const Candidate& next : choice.Candidates(first.After, second))
        best = std::max(best, ComputerChoice::Score(next.After, side));
    return best;
}

bool IsFirstOfTwo(int phase) { return phase == 5 || phase == 14; }

// The value of each candidate of a vehicle-pick phase for the greedy player:
// its outcome's score, and for the first action of two the best it leads to.
std::vector<double> CandidateValues(const ComputerChoice& choice, const std::vector<Candidate>& candidates,
                                    const TurnSituation& turn)
{
    std::vector<double> values;
    values.reserve(candidates.size());
    for (const Candidate& candidate : candidates)
        values.push_back(ComputerChoice::Score(candidate.After, turn.Side));
    if (!IsFirstOfTwo(turn.Phase))
        return values;
    std::vector<std::size_t> order(candidates.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    const std::size_t width = std::min(kLookAheadWidth, order.size());
    std::partial_sort(order.begin(), order.begin() + static_cast<std::ptrdiff_t>(width), order.end(),
                      [&values](std::size_t a, std::size_t b) { return values[a] > values[b]; });
    for (std::size_t i = 0; i < width; ++i)
        values[order[i]] = BestOfTwo(choice, candidates[order[i]], turn.Side, values[order[i]]);
    return values;
}

} // namespace

ComputerChoice::ComputerChoice(ComputerLevel level, std::uint32_t seed) : level_(level), random_(seed) {}

std::vector<ComputerChoice::Candidate> ComputerChoice::Candidates(const BoardState& state,
                                                                  const TurnSituation& turn) const
{
    std::vector<Candidate> out;
    if (!IsVehiclePickPhase(turn.Phase) || (turn.Side != 1 && turn.Side != 2))
        return out;
    const int side = turn.Side;
    const auto index = static_cast<std::size_t>(ActionIndexOfPhase(turn.Phase));
    for (int slot = 0; slot < kVehicleSlots; ++slot) {
        // A destroyed vehicle has left the game, whatever a pick would say.
        if (state.VehiclePos(side, slot) == kOutOfGame)
            continue;
        // The window refuses the vehicle under the tse-tse before the pick.
        if (state.Tsetse(side) > 0 && slot == state.TsetseVeh)
            continue;
        BoardState picked = state;
        const VehiclePick pick =
            PickOwnVehicle(picked, side, slot, turn.Phase, turn.Dice1, turn.Dice2, turn.ActVeh, turn.ActCode);
        if (pick == VehiclePick::Refused)
            continue;
        // The words as the pick leaves them in the game.
        TurnSituation words = turn;
        words.ActVeh[index] = slot;
        words.ActFrom[index] = picked.VehiclePos(side, slot);
        if (pick == VehiclePick::FromCamp)
            AddCampLoadings(picked, words, turn.Phase + 2, out);
        else
            AddDestinations(picked, words, turn.Phase + 3, 0, out);
    }
    return out;
}

double ComputerChoice::Score(const BoardState& state, int side)
{
    const int enemy = OtherSide(side);
    double score = 0.0;
    if (HasWon(state, side))
        score += kWin;
    if (HasWon(state, enemy))
        score -= kWin;
    const FieldDistances ownWay = WayTo(state, side, CampField(side));
    const FieldDistances enemyWay = WayTo(state, enemy, CampField(enemy));
    score += Holdings(state, ownWay, side) - Holdings(state, enemyWay, enemy);
    score -= Exposure(state, ownWay, side);
    score += kOwnThreat * Exposure(state, enemyWay, enemy);
    score -= kMineOnBoard * MinesOnTheRoads(state);
    return score;
}

std::optional<PlannedAction> ComputerChoice::ChooseAction(const BoardState& state, const TurnSituation& turn)
{
    const std::vector<Candidate> candidates = Candidates(state, turn);
    if (candidates.empty())
        return std::nullopt;
    if (level_ == ComputerLevel::Random) {
        const auto last = static_cast<int>(candidates.size()) - 1;
        return candidates[static_cast<std::size_t>(std::uniform_int_distribution<int>(0, last)(random_))].Action;
    }
    return candidates[BestIndex(CandidateValues(*this, candidates, turn), random_)].Action;
}

int ComputerChoice::ChooseDie(const BoardState& state, const TurnSituation& turn)
{
    std::vector<int> dice;
    if (turn.Phase == 4)
        dice = {1, 2, 3};
    else if (turn.Phase == 9)
        dice = {2};
    else if (turn.Phase == 18)
        dice = {1};
    else
        return 0;

    std::vector<int> open;
    std::vector<double> values;
    for (const int die : dice) {
        TurnSituation pick = turn;
        pick.Phase = PickPhaseOf(turn.Phase, die);
        const std::vector<Candidate> candidates = Candidates(state, pick);
        if (candidates.empty())
            continue;
        open.push_back(die);
        if (level_ == ComputerLevel::Random)
            continue;
        const std::vector<double> candidateValues = CandidateValues(*this, candidates, pick);
        values.push_back(*std::max_element(candidateValues.begin(), candidateValues.end()));
    }
    if (open.empty())
        return 0;
    if (level_ == ComputerLevel::Random) {
        const auto last = static_cast<int>(open.size()) - 1;
        return open[static_cast<std::size_t>(std::uniform_int_distribution<int>(0, last)(random_))];
    }
    const std::size_t best = BestIndex(values, random_);
    // Standing still is a choice too: the turn ends when every action would
    // leave the army worse off than it stands.
    if (values[best] < Score(state, turn.Side) - 1e-9)
        return 0;
    return open[best];
}

int ComputerChoice::CardToThrowAway(const std::array<int, 3>& cards)
{
    // Vrijgeleide and Contra spionage answer the opponent's shots, ambushes
    // and cards: they are kept. The computer player plays no Personnel card
    // itself, so among the others any one may go.
    std::vector<int> others;
    for (int i = 0; i < 3; ++i) {
        const int card = cards[static_cast<std::size_t>(i)];
        if (card != kVrijgeleide && card != kContraSpionage)
            others.push_back(i + 1);
    }
    if (others.empty())
        others = {3};
    if (level_ == ComputerLevel::Random) {
        const auto last = static_cast<int>(others.size()) - 1;
        return others[static_cast<std::size_t>(std::uniform_int_distribution<int>(0, last)(random_))];
    }
    return others.back();
}

std::optional<ComputerChoice::CardPlay> ComputerChoice::ChooseCardToPlay(const BoardState& state, int side,
                                                                          const std::array<int, 2>& hand, int count)
{
    const int enemy = 3 - side;
    const double now = Score(state, side);
    std::vector<std::pair<double, CardPlay>> plays;
    auto tryPlay = [&](CardPlay play, const auto& effect) {
        BoardState after = state;
        effect(after);
        plays.emplace_back(Score(after, side) - now, play);
    };
    for (int slot = 1; slot <= std::min(count, 2); ++slot) {
        const int card = hand[static_cast<std::size_t>(slot - 1)];
        CardPlay play;
        play.HandSlot = slot;
        play.Card = card;
        switch (card) {
        case kUitwisseling:
            tryPlay(play, [](BoardState& b) { ExchangePrisoners(b); });
            break;
        case kMilitairePolitie:
            // Only while the enemy jeep is out: at home it changes nothing.
            if (IsRoadField(state.VehiclePos(enemy, kJeepSlot)))
                tryPlay(play, [enemy](BoardState& b) { MilitaryPoliceOnEnemyJeep(b, enemy); });
            break;
        case kHinderlaag:
            if (AmbushTargetAllowed(state, side, kJeepSlot)) {
                play.VehicleSlot = kJeepSlot;
                tryPlay(play, [enemy](BoardState& b) { AmbushEnemyJeep(b, enemy); });
            }
            break;
        case kMijnopruimingsdienst:
            for (int field = kFirstRoadField; field <= kLastRoadField; ++field)
                if (EnemyMineField(state, side, field)) {
                    play.Field = field;
                    tryPlay(play, [side, field](BoardState& b) { ClearEnemyMine(b, side, field); });
                }
            break;
        default:
            break;
        }
    }
    if (plays.empty())
        return std::nullopt;
    if (level_ == ComputerLevel::Random) {
        // Now and then, like a player who tries his cards.
        if (std::uniform_int_distribution<int>(0, 2)(random_) != 0)
            return std::nullopt;
        return plays[std::uniform_int_distribution<std::size_t>(0, plays.size() - 1)(random_)].second;
    }
    const auto best = std::max_element(plays.begin(), plays.end(),
                                       [](const auto& a, const auto& b) { return a.first < b.first; });
    // A card is kept for later unless it gains something now.
    if (best->first <= 1.0)
        return std::nullopt;
    return best->second;
}

} // namespace vk
