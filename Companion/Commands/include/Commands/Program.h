#pragma once

namespace hbr {

/// The whole program `heedbanner`: reads the command line, runs one command and returns the exit code (0
/// done, 1 failed, 2 wrong usage, 3 nothing to act on). Sets the process's environment; call it once.
int runCompanion(int argc, char** argv);

}  // namespace hbr
