#pragma once

// The message files of the game in the folder of the selected opponent: the
// own ones bear the local player's name, the opponent's his name.

#include "link/MessageKinds.h"

#include <QString>

namespace vk {

class Hoofdvenster;

QString OwnFile(const Hoofdvenster& w, MessageKindId kind);
QString OpponentFile(const Hoofdvenster& w, MessageKindId kind);
// The toss files carry the toss number in their extension: ".d01" ...
QString OwnTossFile(const Hoofdvenster& w, int tossNumber);
QString OpponentTossFile(const Hoofdvenster& w, int tossNumber);
// The folder of the selected opponent.
QString GameFolder(const Hoofdvenster& w);
// The opponent's player name.
QString OpponentName(const Hoofdvenster& w);
// The saved game against the opponent, in the data folder.
QString SavedGameFile(const Hoofdvenster& w);

// Between two reads of a message that is not whole yet: sleeps until the
// folder changes (the watcher wakes it), any other event comes, or 50 ms
// have passed.
void WaitForRestOfMessage();

// A message of the kind read whole with the kind's guard against a file the
// service delivered in part; between two reads 50 ms pass with the interface
// alive.
MessageValues ReadWholeMessage(MessageKindId kind, const QString& path, const QString& ownDefault = QString());
int NumberIn(const MessageValues& values, const char* key);

} // namespace vk
