#include <qvpreslayer/JSONSerializer.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>

#include <qvsys/LargeBlocks.h>

#include <qvpreslayer/BuildParameterStrings.h>
#include <qvpreslayer/ParametersRegistry.h>
#include <qvpreslayer/PresModelBuilderSupport.h>
#include <qvpreslayer/SerializeStructure.h>
#include <qvpreslayer/VisitParametersStructure.h>

#include "main/json/JSONDocument.h"
#include "main/json/JSONReader.h"
#include "main/json/ThreadScratch.h"
#include "main/json/direct/DirectFilling.h"

namespace {

// A reader for one text: the one that the thread keeps, unless that is in use.
class ReaderLease {
public:
    explicit ReaderLease(ThreadScratch* scratch) : m_input(scratch == nullptr ? nullptr : &scratch->input) {
        if (m_input == nullptr || m_input->inUse) {
            m_own = std::make_unique<ThreadScratch::Input>();
            m_input = m_own.get();
        }
        m_input->inUse = true;
    }
    ReaderLease(const ReaderLease&) = delete;
    ReaderLease& operator=(const ReaderLease&) = delete;
    ~ReaderLease() {
        m_input->reader.Forget();
        m_input->inUse = false;
    }

    DirectReader& Get() { return m_input->reader; }

private:
    ThreadScratch::Input* m_input;
    std::unique_ptr<ThreadScratch::Input> m_own;
};

RefCntPtr<IParameters> ReadAtLength(const TString& json, const TString& namespaceName, bool shortNames, bool lookupFlag,
                                    IReadingDiagnostics* diagnostics, RefCntPtr<IParameters>* root = nullptr) {
    const JSONDocument document(json);
    return JSONReader(document, namespaceName, shortNames, lookupFlag, diagnostics).Read(root);
}

// The bag, by the short way where that can be; the long one otherwise, which also tells what is wrong.
RefCntPtr<IParameters> ReadEitherWay(const TString& json, const TString& namespaceName, bool shortNames,
                                     bool lookupFlag) {
    ParametersRegistry* const registry = ParametersRegistry::GetInstance();
    if (registry != nullptr) {
        ReaderLease lease(ThreadScratch::Find());
        const NameForm form = shortNames ? NameForm::Short : NameForm::Camel;
        if (lease.Get().Read(json, *registry, namespaceName, form)) {
            RefCntPtr<IParameters> root = registry->CreateParameters();
            if (root && DirectFilling(lease.Get().Items(), *registry, form).MakeBag(*root)) {
                return root;
            }
            return ReadAtLength(json, namespaceName, shortNames, lookupFlag, nullptr, &root);
        }
    }
    return ReadAtLength(json, namespaceName, shortNames, lookupFlag, nullptr);
}

// The text that is being written, whose length is not known before. Short ones are written in memory that the thread
// keeps, and copied once into memory of their size; for the others the last text of the thread tells how much to ask
// for, so that most are neither copied nor grow.
class OutputText {
public:
    OutputText() : m_output(FindKept()) {
        if (m_output == nullptr) {
            m_own = std::make_unique<ThreadScratch::Output>();
            m_output = m_own.get();
        }
        if (m_output->lastUnits > kReservedUnits || m_output->text.capacity() < kReservedUnits) [[unlikely]] {
            Foresee(m_output->lastUnits);
        }
        m_output->inUse = true;
    }
    OutputText(const OutputText&) = delete;
    OutputText& operator=(const OutputText&) = delete;
    ~OutputText() {
        m_output->writer.Forget();
        if (Text().capacity() > kKeptUnits) [[unlikely]] {
            Text() = TString();
        }
        Text().clear();
        m_output->inUse = false;
    }

    DirectWriter& Writer() { return m_output->writer; }
    TString& Text() { return m_output->text; }

    TString Take() {
        const std::size_t size = Text().size();
        m_output->lastUnits = size <= kForeseenUnits ? size : 0;  // so long ones go by their lists
        if (size <= kCopiedUnits) {
            return Text().view();
        }
        TString text = std::move(Text());
        // Cutting a text of many pages costs more than it gives back, unless it is half of them.
        if (text.capacity() > (size <= kCutUnits ? size + size / 4 : 2 * size)) {
            text.shrink_to_fit();
        }
        return text;
    }

private:
    // The thread's, unless that is in use or there is none.
    static ThreadScratch::Output* FindKept() {
        ThreadScratch* const scratch = ThreadScratch::Find();
        return scratch == nullptr || scratch->output.inUse ? nullptr : &scratch->output;
    }

    // The last text tells nothing for certain: a short one must not fail for want of memory for a long one.
    void Foresee(std::size_t lastUnits) {
        if (lastUnits > kReservedUnits) {
            try {
                Text().reserve(lastUnits + lastUnits / 8);
                return;
            } catch (const std::bad_alloc&) {
            }
        }
        Text().reserve(kReservedUnits);
    }

    static constexpr std::size_t kReservedUnits = 2048;
    static constexpr std::size_t kKeptUnits = 4096;
    static constexpr std::size_t kCopiedUnits = 1024;
    static constexpr std::size_t kCutUnits = 131072;
    static constexpr std::size_t kForeseenUnits = qvsys::detail::kMostLargeBlock / sizeof(char16_t) / 4 * 3;

    ThreadScratch::Output* m_output;
    std::unique_ptr<ThreadScratch::Output> m_own;
};

}  // namespace

bool JSONSerializer::s_forceDisableCapture = false;

JSONSerializer::JSONSerializer(const TString& namespaceName) : m_namespace(namespaceName) {}

JSONSerializer::JSONSerializer(const JSONSerializer&) = default;
JSONSerializer& JSONSerializer::operator=(const JSONSerializer&) = default;
JSONSerializer::~JSONSerializer() = default;

void JSONSerializer::EnableCapture(bool enable, bool nested) {
    m_captureEnabled = enable && !s_forceDisableCapture;
    m_nestedCapture = nested && !s_forceDisableCapture;
}

void JSONSerializer::ForceDisableCapture(bool disable) { s_forceDisableCapture = disable; }

TString JSONSerializer::ToString(RefCntPtr<const IParameters> bag, OutputType type) const {
    OutputText output;
    TString& out = output.Text();
    if (type == Compact) {
        output.Writer().Write(out, ParametersRegistry::Get(), PresModelBuilderSupport::GetTextOptions(),
                              {m_captureEnabled, m_nestedCapture}, bag);
    } else {
        BuildParameterStrings visitor(out, type, m_captureEnabled, m_nestedCapture,
                                      !PresModelBuilderSupport::UseVerboseNames());
        VisitParametersStructure(m_namespace, std::move(bag), visitor);
        visitor.Finish();
    }
    return output.Take();
}

TString JSONSerializer::PresModelToString(RefCntPtr<const PresentationModel> model, OutputType type) const {
    OutputText output;
    PresModelToString(std::move(model), PresModelBuilderSupport::UseVerboseNames(), type, output.Text());
    return output.Take();
}

void JSONSerializer::PresModelToString(RefCntPtr<const PresentationModel> model, bool verboseNames, OutputType type,
                                       TString& out) const {
    BuildParameterStrings visitor(out, type, m_captureEnabled, m_nestedCapture, !verboseNames);
    const int id = model->GetDefaultParamID();
    const RefCntPtr<IStructureSerializer> serializer(ParametersRegistry::Get().GetStructureSerializer(id));
    SerializeStructure stream(visitor, verboseNames, PresModelBuilderSupport::CompressArrays());
    // A model hands out a bag of itself without changing; that operation alone is not const.
    const RefCntPtr<IParameters> bag = const_cast<PresentationModel&>(*model).AsIParameters();
    const RefCntPtr<const IParameter> value(&bag->GetParameter(id));
    serializer->Serialize(value, stream, id, true);
    visitor.Finish();
}

RefCntPtr<IParameters> JSONSerializer::ToParameters(const TString& json) const {
    const bool shortNames = !PresModelBuilderSupport::UseVerboseNames();
    return m_diagnostics == nullptr ? ReadEitherWay(json, m_namespace, shortNames, false)
                                    : ReadAtLength(json, m_namespace, shortNames, false, m_diagnostics);
}

RefCntPtr<IParameters> JSONSerializer::ToParameters(const TString& json, bool shortNames, bool lookupFlag) const {
    // Names that are spelled in one form and sought in the other go the long way.
    const bool sameForm = shortNames != (lookupFlag || PresModelBuilderSupport::UseVerboseNames());
    return sameForm && m_diagnostics == nullptr
               ? ReadEitherWay(json, m_namespace, shortNames, lookupFlag)
               : ReadAtLength(json, m_namespace, shortNames, lookupFlag, m_diagnostics);
}
