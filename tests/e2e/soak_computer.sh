#!/bin/sh
# Many more computer-against-computer games than the test run plays: greedy
# against random and greedy against greedy, GAMES of each (default 100), at
# the test's time scale. Not part of the test run.
#
#   tests/e2e/soak_computer.sh build/program/valkenhorn [GAMES]
set -eu
program=$1
games=${2:-100}
here=$(dirname "$0")
VALKENHORN_COMPUTER_GAMES=$games VALKENHORN_COMPUTER_TURNS=400 \
  python3 "$here/test_computer.py" "$program" ComputerGames.test_greedy_against_random
VALKENHORN_COMPUTER_GAMES=$games VALKENHORN_COMPUTER_TURNS=400 \
  python3 "$here/test_computer.py" "$program" ComputerGames.test_greedy_against_greedy
