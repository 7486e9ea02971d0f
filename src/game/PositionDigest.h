#pragma once

// A short digest of a game's position, the same on both copies of a game in
// step: the end-of-turn message carries the sender's (key HASH) and the
// reader compares it with its own after the replay of that turn.

#include "game/SavedGame.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vk {

// The position as the saved game holds it, named by army rather than by
// side, so that it reads the same from both copies: every key line of
// SavedGameText written as "SECTION.KEY=VALUE", where a section ending in
// _LOK ends in _ and the army number of LocalSide instead (VEHPOS_LOK of
// army 2 becomes VEHPOS_2) and one ending in _EXT in _ and the number of
// ExternalSide; MAIN's LOK and EXT are left out. The lines are sorted by
// their bytes and each ends with a line feed.
std::string CanonicalPositionText(const BoardState& state, const GameProgress& progress);

// FNV-1a of 64 bits: offset basis 14695981039346656037, prime
// 1099511628211, one byte at a time (xor, then multiply modulo 2^64).
std::uint64_t Fnv1a64(std::string_view bytes);

// Fnv1a64 of CanonicalPositionText as 16 lowercase hexadecimal digits.
std::string PositionDigest(const BoardState& state, const GameProgress& progress);

// A value that can be a digest: 16 characters 0-9, a-f.
bool IsPositionDigest(std::string_view text);

} // namespace vk
