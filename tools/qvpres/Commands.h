// Every command, by the function that adds it to the program; each is defined beside its work.
#pragma once

#include "tools/qvpres/Program.h"

namespace qvpres {

void AddCheckCommand(Program& program);
void AddShowCommand(Program& program);
void AddConvertCommand(Program& program);
void AddDiffCommand(Program& program);
void AddStatsCommand(Program& program);
void AddImportCommand(Program& program);
void AddReportCommand(Program& program);
void AddVocabularyCommands(Program& program);  // vocabulary and generate
void AddShellCommands(Program& program);       // completion and manual; they describe the commands added before them

}  // namespace qvpres
