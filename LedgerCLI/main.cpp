#include "LedgerCLI/CommandLine.h"

int main(int argumentCount, char** arguments)
{
    return LedgerCLI::CommandLine::run(argumentCount, arguments);
}
