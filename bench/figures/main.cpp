// Prints the single figures of docs/performance.md as a table in Markdown: bench_figures
#include <cstdio>

#include "Figures.h"

int main() {
    figures::Figures all;
    figures::AddNumberTexts(all);
    figures::AddLookUps(all);
    figures::AddBags(all);
    figures::AddRuns(all);
    figures::AddThreads(all);
    std::printf("| what | ns | beside | ns | ratio | goal |\n|---|---:|---|---:|---:|---:|\n");
    for (const figures::Figure& figure : all) {
        const bool missed = figure.most != 0 && figure.outcome.ratio > figure.most;
        std::printf("| %s | %.3g | %s | %.2f | %s%.2f%s |", figure.what.c_str(), figure.outcome.ours,
                    figure.beside.c_str(), figure.outcome.theirs, missed ? "**" : "", figure.outcome.ratio,
                    missed ? "**" : "");
        if (figure.most != 0) {
            std::printf(" %.3g", figure.most);
        }
        std::printf(" |\n");
    }
}
