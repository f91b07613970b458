#include "LedgerService/Operations/CommandLine.h"

int main(int argumentCount, char** arguments)
{
    return CommandLine::run(argumentCount, arguments);
}
