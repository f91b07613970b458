#include "LedgerService/Operations/CommandLine.h"

int main(int argumentCount, char** arguments)
{
    return LedgerService::CommandLine::run(argumentCount, arguments);
}
