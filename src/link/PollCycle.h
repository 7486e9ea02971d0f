#pragma once

// The link's heartbeat: Action_Timer fires every 50 ms and counts PollTick
// modulo 10; at 4 it runs InvitationPoll, at 9 PresencePoll, so each looks
// into the shared folders twice a second, 250 ms apart.

namespace vk {

class Hoofdvenster;

struct PollCounters {
    int PollTick = 0;        // 0..9, counted by Action_Timer
    int ActionCounter = 0;   // 0..79, counted by PresencePoll; one cycle is 40 s
};

PollCounters& Polls();

void Action_Timer_Timer(Hoofdvenster& window);

// Presence: writes the own .xid where it belongs, deletes the opponents'
// files as a heartbeat, labels the selected player present or absent, and
// picks up a new name of an opponent.
void PresencePoll(Hoofdvenster& window);

// Invitations: asks the user about an invitation that came in, and notices
// the acceptance of the own one; both lock the pair together.
void InvitationPoll(Hoofdvenster& window);

} // namespace vk
