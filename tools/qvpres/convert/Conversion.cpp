#include "tools/qvpres/convert/Conversion.h"

#include <exception>

#include "tools/qvpres/Failure.h"
#include "tools/qvpres/check/Check.h"
#include "tools/qvpres/text/TextInput.h"

namespace qvpres {

namespace {

constexpr std::size_t kMostLosses = 20;

RefCntPtr<IParameters> Read(const TString& text, const TString& nameSpace, NameForm names) {
    const ToolSession session(names == NameForm::Short);
    return JSONSerializer(nameSpace).ToParameters(text);
}

TString Write(const RefCntPtr<IParameters>& bag, const TString& nameSpace, NameForm names, bool packed,
              JSONSerializer::OutputType layout) {
    const ToolSession session(names == NameForm::Short, packed);
    return JSONSerializer(nameSpace).ToString(bag, layout);
}

// The first error that check would tell, in a line.
[[noreturn]] void ThrowUnreadable(const TString& text, const LoadedVocabulary& vocabulary, const TString& nameSpace,
                                  const ConvertOptions& options, const std::string& source, std::size_t line,
                                  const char* otherwise) {
    CheckOptions check;
    check.maxFindings = 1;
    check.names = options.names;
    const CheckResult result = Check(text.ToUtf8(), vocabulary, nameSpace, check);
    if (result.findings.empty()) {
        throw Failure(source + ": " + otherwise);
    }
    const CheckFinding& first = result.findings.front();
    throw Failure(source + ":" + std::to_string(first.line + line) + ":" + std::to_string(first.column) + ": " +
                  (first.path.empty() ? "" : first.path + ": ") + first.message);
}

NameForm WrittenNames(const std::string& asked, NameForm read) {
    return asked == "same" ? read : asked == "short" ? NameForm::Short : NameForm::Verbose;
}

bool IsReadable(const TString& text, const TString& nameSpace, NameForm names) {
    try {
        Read(text, nameSpace, names);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace

Conversion Convert(const TString& text, const LoadedVocabulary& vocabulary, const TString& nameSpace,
                   const ConvertOptions& options, const std::string& source, std::size_t line) {
    std::unique_ptr<ParameterText> before;
    RefCntPtr<IParameters> bag;
    try {
        before = std::make_unique<ParameterText>(text, vocabulary, nameSpace, options.names);
        bag = Read(text, nameSpace, before->Names());
    } catch (const std::exception& failure) {
        ThrowUnreadable(text, vocabulary, nameSpace, options, source, line, failure.what());
    }
    const NameForm names = WrittenNames(options.writtenNames, before->Names());
    Conversion result;
    try {
        const TString written = Write(bag, nameSpace, names, options.packed, options.layout);
        result.utf8 = written.ToUtf8();
        if (!options.lossy) {
            // The other forms are no JSON, and say what the compact one says.
            const bool isJSON = options.layout == JSONSerializer::Pretty || options.layout == JSONSerializer::Compact;
            const TString after =
                isJSON ? written : Write(bag, nameSpace, names, options.packed, JSONSerializer::Compact);
            const ParameterText cut(after, vocabulary, nameSpace, names == NameForm::Short ? "short" : "verbose");
            result.losses = CompareTexts(*before, cut, {}, kMostLosses);
            result.readable = IsReadable(after, nameSpace, names);
        }
    } catch (const std::exception& failure) {
        throw Failure(source + ": cannot be written so: " + failure.what());
    }
    return result;
}

}  // namespace qvpres
