#pragma once

namespace LedgerService {

/// The program's commands: reads the arguments, does what they ask, gives the exit code.
namespace CommandLine {

/// 0: done. 1: the command was understood and could not be done, or `verify` found something wrong. Other codes: the
/// arguments are wrong.
int run(int argumentCount, const char* const* arguments);

}

}
