#include "RulesTool.h"

#include "board/Picking.h"
#include "board/BoardState.h"
#include "board/BoardView.h"
#include "board/Movement.h"
#include "game/ProfileValues.h"
#include "game/SavedGame.h"
#include "shell/RunTimeFault.h"

#include <filesystem>
#include <ostream>
#include <sstream>
#include <stdexcept>

namespace vk {

namespace {

constexpr const char* kUsage =
    "usage: valkenhorn-rules judge GAME.vkh SIDE SLOT FROM TO STEPS MAYSHOOT [--apply OUT.vkh [--leave-mine]]"
    " | valkenhorn-rules centre FIELD BOARDSIDE";

// A bad file or argument: exit code 2.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

int Number(const std::string& text, const char* name, int low, int high)
{
    int value = 0;
    try {
        value = ProfileInt(text, name);
    } catch (const ProfileValueError&) {
        throw UsageError(std::string(name) + " must be a whole number, not \"" + text + "\"");
    }
    if (value < low || value > high)
        throw UsageError(std::string(name) + " must lie in " + std::to_string(low) + ".." + std::to_string(high) +
                         ", not " + std::to_string(value));
    return value;
}

const char* Flag(bool value)
{
    return value ? "-1" : "0";
}

struct JudgeArguments {
    std::filesystem::path game;
    int side = 0;
    int slot = 0;
    int from = 0;
    int to = 0;
    int steps = 0;
    bool mayShoot = false;
    std::filesystem::path apply;
    bool leaveMine = false;
};

JudgeArguments ParseJudge(const std::vector<std::string>& args)
{
    JudgeArguments parsed;
    std::vector<std::string> positional;
    bool applyGiven = false;
    for (std::size_t i = 1; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--apply") {
            if (applyGiven)
                throw UsageError("--apply given twice");
            if (i + 1 >= args.size() || args[i + 1].empty())
                throw UsageError("--apply needs the path of the file to write");
            parsed.apply = args[++i];
            applyGiven = true;
        } else if (arg == "--leave-mine") {
            parsed.leaveMine = true;
        } else if (arg.size() > 1 && arg[0] == '-' && arg[1] == '-') {
            throw UsageError("unknown option " + arg);
        } else {
            positional.push_back(arg);
        }
    }
    if (positional.size() != 7)
        throw UsageError(std::string("judge takes 7 arguments, not ") + std::to_string(positional.size()) + "; " +
                         kUsage);
    if (parsed.leaveMine && !applyGiven)
        throw UsageError("--leave-mine only goes with --apply");
    parsed.game = positional[0];
    parsed.side = Number(positional[1], "SIDE", 1, 2);
    parsed.slot = Number(positional[2], "SLOT", 0, 10);
    parsed.from = Number(positional[3], "FROM", 0, 119);
    parsed.to = Number(positional[4], "TO", 0, 119);
    parsed.steps = Number(positional[5], "STEPS", -32768, 32767);
    parsed.mayShoot = Number(positional[6], "MAYSHOOT", 0, 1) == 1;
    return parsed;
}

// The position of the file, drawn as a resumed game is, from the view of
// army `viewSide`.
void ReadPosition(const std::filesystem::path& path, int viewSide, BoardState& state, GameProgress& progress)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        throw UsageError("no saved game at " + path.string());
    state.LocalSide = 1;
    ResetNewGame(state);
    try {
        ReadSavedGame(path, state, progress);
    } catch (const ProfileValueError& fault) {
        throw UsageError(path.string() + ": " + fault.what());
    } catch (const SavedGameError& fault) {
        throw UsageError(path.string() + ": " + fault.what());
    }
    const int fileLocalSide = state.LocalSide;
    state.LocalSide = viewSide;
    DrawBoardAfterLoad(state);
    state.LocalSide = fileLocalSide;
}

int Judge(const std::vector<std::string>& args, std::ostream& out)
{
    const JudgeArguments a = ParseJudge(args);
    BoardState state;
    GameProgress progress;
    ReadPosition(a.game, a.side, state, progress);
    const int fileLocalSide = state.LocalSide;

    if (!a.apply.empty() && state.VehiclePos(a.side, a.slot) != a.from)
        throw UsageError("FROM " + std::to_string(a.from) + " is not where vehicle " + std::to_string(a.slot) +
                         " of army " + std::to_string(a.side) + " stands (" +
                         std::to_string(state.VehiclePos(a.side, a.slot)) + ")");

    MoveVerdict verdict;
    if (a.apply.empty()) {
        IsLegalMove(state, a.side, a.slot, a.from, a.to, a.steps, a.mayShoot);
        verdict = state.Verdict;
    } else {
        state.LocalSide = a.side;
        // The verdict is the judge's, before the move clears CompassCrossed.
        verdict = JudgeMove(state, a.side, a.slot, a.from, a.to, a.steps, a.mayShoot);
        ApplyBoardClick(state, a.side, a.slot, a.from, a.to, a.steps, a.mayShoot, a.leaveMine);
        state.LocalSide = fileLocalSide;
    }

    std::ostringstream lines;
    lines << "Legal=" << Flag(verdict.Legal) << '\n'
        << "ShootAllowed=" << Flag(verdict.ShootAllowed) << '\n'
        << "ShootTarget=" << verdict.ShootTarget << '\n'
        << "MinePickup=" << Flag(verdict.MinePickup) << '\n'
        << "FlagLoad=" << Flag(verdict.FlagLoad) << '\n'
        << "CompassCrossed=" << Flag(verdict.CompassCrossed) << '\n'
        << "Heading=" << verdict.Heading << '\n';

    if (!a.apply.empty()) {
        if (!SaveGame(a.apply, state, progress))
            throw UsageError("cannot write " + a.apply.string());
        lines << "PendingDraws=" << state.PendingDraws << '\n';
    }
    out << lines.str();
    return 0;
}

// The point a click on a field hits, in twips on the board of the view.
int Centre(const std::vector<std::string>& args, std::ostream& out)
{
    if (args.size() != 3)
        throw UsageError(kUsage);
    const int field = Number(args[1], "FIELD", 1, kLastField);
    const BoardView view{Number(args[2], "BOARDSIDE", 1, 2), kBoardWidth, kBoardHeight};
    const TwipPoint centre = HitCentre(view, field);
    out << centre.X << ' ' << centre.Y << '\n';
    return 0;
}

} // namespace

int RunRulesTool(const std::vector<std::string>& args, std::ostream& out, std::ostream& err)
{
    try {
        if (args.empty())
            throw UsageError(kUsage);
        if (args[0] == "judge")
            return Judge(args, out);
        if (args[0] == "centre")
            return Centre(args, out);
        throw UsageError("unknown command " + args[0] + "; " + kUsage);
    } catch (const UsageError& error) {
        err << "valkenhorn-rules: " << error.what() << '\n';
        return 2;
    } catch (const RunTimeFault& fault) {
        err << "valkenhorn-rules: rules fault: " << fault.what() << '\n';
        return 3;
    } catch (const std::exception& fault) {
        err << "valkenhorn-rules: rules fault: " << fault.what() << '\n';
        return 3;
    }
}

} // namespace vk
