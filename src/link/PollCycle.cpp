#include "link/PollCycle.h"

namespace vk {

PollCounters& Polls()
{
    static PollCounters counters;
    return counters;
}

void Action_Timer_Timer(Hoofdvenster& window)
{
    PollCounters& p = Polls();
    p.PollTick = (p.PollTick + 1) % 10;
    if (p.PollTick == 4)
        InvitationPoll(window);
    else if (p.PollTick == 9)
        PresencePoll(window);
}

} // namespace vk
