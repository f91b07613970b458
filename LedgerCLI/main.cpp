#include "LedgerCLI/CommandLine.h"

int main(int argumentCount, char** arguments)
{
    return CommandLine::run(argumentCount, arguments);
}
