#include "tools/qvpres/Commands.h"

int main(int argc, char** argv) {
    qvpres::Program program;
    qvpres::AddCheckCommand(program);
    qvpres::AddShowCommand(program);
    qvpres::AddConvertCommand(program);
    qvpres::AddDiffCommand(program);
    qvpres::AddStatsCommand(program);
    qvpres::AddImportCommand(program);
    qvpres::AddReportCommand(program);
    qvpres::AddVocabularyCommands(program);
    qvpres::AddShellCommands(program);
    return static_cast<int>(program.Run(argc, argv));
}
