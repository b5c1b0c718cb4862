#include <atomic>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <sstream>

#include "tools/qvpres/Commands.h"
#include "tools/qvpres/CommonOptions.h"
#include "tools/qvpres/Failure.h"
#include "tools/qvpres/Input.h"
#include "tools/qvpres/Terminal.h"
#include "tools/qvpres/convert/Conversion.h"
#include "tools/qvpres/convert/LinePipeline.h"
#include "tools/qvpres/diff/DiffRendering.h"
#include "tools/qvpres/text/Wording.h"

namespace qvpres {

namespace {

constexpr unsigned kMostJobs = 256;

struct Options : CommonOptions {
    std::string file;
    std::string output = "-";
    std::string layout;  // empty: pretty, or compact for lines
    std::string arrays = "plain";
    ConvertOptions convert;
    bool lines = false;
    PipelineOptions pipeline;
};

const std::map<std::string, JSONSerializer::OutputType> kLayouts = {
    {"pretty", JSONSerializer::Pretty},
    {"compact", JSONSerializer::Compact},
    {"bare", JSONSerializer::Bare},
    {"bare-raw", JSONSerializer::BareRawNames},
    {"unquoted", JSONSerializer::UnquotedNames},
};

// What would be lost, or an empty text.
std::string Losses(const Conversion& conversion, const std::string& source, const Style& style) {
    std::ostringstream text;
    if (!conversion.losses.differences.empty()) {
        text << "qvpres: " << source << ": the new text would say something else (--lossy writes it all the same):\n";
        for (const Difference& difference : conversion.losses.differences) {
            text << "  ";
            WriteDifference(text, difference, style);
        }
        text << (conversion.losses.cut ? "  and more\n" : "");
    } else if (!conversion.readable) {
        text << "qvpres: " << source
             << ": the new text would not be read any more, such as lists of typed values, which are written without "
                "their types (--lossy writes it all the same)\n";
    }
    return text.str();
}

ExitCode ConvertText(const Options& options, const LoadedVocabulary& vocabulary) {
    const TString text = TString::FromUtf8(ReadInput(options.file));
    const std::string source = InputName(options.file);
    const Conversion conversion = Convert(text, vocabulary, vocabulary.GetNamespace(), options.convert, source);
    const std::string losses = Losses(conversion, source, Style(options.color, Stream::Error));
    if (!losses.empty()) {
        std::cerr << losses;
        return ExitCode::Found;
    }
    WriteOutput(options.output, conversion.utf8 + "\n");
    return ExitCode::Done;
}

// Lines that fail are unreadable (2) or would lose something (1).
ExitCode ConvertLines(const Options& options, const LoadedVocabulary& vocabulary, std::istream& in, std::ostream& out) {
    const TString nameSpace = vocabulary.GetNamespace();
    const std::string source = InputName(options.file);
    const Style style(options.color, Stream::Error);
    std::atomic<bool> unreadable = false;
    const LineWork work = [&](std::string_view line, std::size_t number) -> LineOutcome {
        try {
            const Conversion conversion =
                Convert(TString::FromUtf8(line), vocabulary, nameSpace, options.convert, source, number);
            const std::string losses = Losses(conversion, source + ":" + std::to_string(number + 1), style);
            return {conversion.utf8, losses, !losses.empty(), !losses.empty()};
        } catch (const std::exception& failure) {
            unreadable = true;
            return {"", "qvpres: " + Visible(failure.what()) + "\n", true, true};
        }
    };
    const PipelineResult result = RunPipeline(in, out, std::cerr, work, options.pipeline);
    if (result.failures == 0) {
        return ExitCode::Done;
    }
    return unreadable ? ExitCode::Failed : ExitCode::Found;
}

ExitCode ConvertLines(const Options& options, const LoadedVocabulary& vocabulary) {
    std::ifstream inFile;
    std::ofstream outFile;
    if (options.file != "-") {
        inFile.open(options.file, std::ios::binary);
        if (!inFile) {
            throw Failure(options.file + ": cannot be opened");
        }
    } else if (IsTerminal(Stream::In)) {
        throw Failure("no input: name a file, or pipe lines in");
    }
    if (options.output != "-") {
        outFile.open(options.output, std::ios::binary | std::ios::trunc);
    }
    std::ostream& out = options.output == "-" ? std::cout : outFile;
    const ExitCode code = ConvertLines(options, vocabulary, options.file == "-" ? std::cin : inFile, out);
    if (!out.flush()) {
        throw Failure(options.output + ": cannot be written");
    }
    return code;
}

ExitCode RunConvert(Options& options) {
    options.convert.names = options.names;
    options.convert.packed = options.arrays == "packed";
    options.convert.layout =
        kLayouts.at(options.layout.empty() ? options.lines ? "compact" : "pretty" : options.layout);
    if (options.lines && options.convert.layout == JSONSerializer::Pretty) {
        throw Failure("a text in lines of its own does not go with --ndjson; choose another layout");
    }
    if (!options.lines && options.pipeline.jobs > 1) {
        throw Failure("--jobs shares lines among threads; it needs --ndjson");
    }
    const LoadedVocabulary vocabulary(options);
    return options.lines ? ConvertLines(options, vocabulary) : ConvertText(options, vocabulary);
}

}  // namespace

void AddConvertCommand(Program& program) {
    const auto options = std::make_shared<Options>();
    CLI::App& command =
        program.AddCommand(program.App(), "convert", "Write texts in another form, and refuse to lose anything",
                           [options] { return RunConvert(*options); });
    AddFileArgument(command, options->file);
    command.add_option("-o,--output", options->output, "Where to write; - is standard output")->type_name("FILE");
    AddTextOptions(command, *options);
    command.add_option("--write-names", options->convert.writtenNames, "Names to write")
        ->type_name("FORM")
        ->check(CLI::IsMember({"same", "verbose", "short"}))
        ->capture_default_str();
    command.add_option("--layout", options->layout, "Form of the text; pretty, with --ndjson compact")
        ->type_name("FORM")
        ->check(CLI::IsMember({"pretty", "compact", "bare", "bare-raw", "unquoted"}));
    command.add_option("--arrays", options->arrays, "Lists of numbers plain, or packed in runs")
        ->type_name("FORM")
        ->check(CLI::IsMember({"plain", "packed"}))
        ->capture_default_str();
    command.add_flag("--lossy", options->convert.lossy, "Write also what does not say the same as what was read");
    command.add_flag("--ndjson", options->lines, "Each line is a text of its own, in and out, in the same order");
    command.add_option("-j,--jobs", options->pipeline.jobs, "Threads, with --ndjson")
        ->type_name("N")
        ->check(CLI::Range(1u, kMostJobs))
        ->capture_default_str();
    command.add_flag("--keep-going", options->pipeline.keepGoing, "With --ndjson: leave out lines that fail and go on");
    AddColorOption(command, *options);
}

}  // namespace qvpres
