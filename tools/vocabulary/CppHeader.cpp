#include "tools/vocabulary/CppHeader.h"

#include <algorithm>
#include <cstdio>
#include <set>
#include <sstream>

namespace qvpres {

namespace {

bool IsAsciiLetter(char16_t unit) { return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z'); }
bool IsAsciiDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

// The words of a name with capitals in front: "mark-sizes" gives MarkSizes. Whatever C++ names cannot hold ends a word;
// units beyond ASCII become their number, so that names in other scripts stay apart.
std::string Capitalised(std::u16string_view name) {
    std::string result;
    bool atStart = true;
    for (const char16_t unit : name) {
        if (unit > 0x7F) {
            char code[8];
            std::snprintf(code, sizeof code, "U%04x", static_cast<unsigned>(unit));
            result += code;
            atStart = true;
        } else if (IsAsciiLetter(unit) || IsAsciiDigit(unit)) {
            const bool raise = atStart && unit >= u'a' && unit <= u'z';
            result += static_cast<char>(raise ? unit - u'a' + u'A' : unit);
            atStart = false;
        } else {
            atStart = true;
        }
    }
    return result;
}

// A wide literal. Octal escapes, since they end by themselves.
std::string Literal(const TString& text) {
    std::string literal = "L\"";
    const std::u16string_view units = text;
    for (std::size_t i = 0; i < units.size(); ++i) {
        char code[12];
        const char16_t unit = units[i];
        if (unit == u'"' || unit == u'\\' || unit == u'?') {  // "?": no trigraphs
            literal += '\\';
            literal += static_cast<char>(unit);
        } else if (unit < 0x20 || (unit >= 0x7F && unit < 0xA0)) {
            std::snprintf(code, sizeof code, "\\%03o", static_cast<unsigned>(unit));
            literal += code;
        } else if (unit < 0x7F) {
            literal += static_cast<char>(unit);
        } else if ((unit & 0xFC00) == 0xD800 && i + 1 < units.size()) {
            const unsigned point = 0x10000 + ((unit & 0x3FFu) << 10) + (units[++i] & 0x3FFu);
            std::snprintf(code, sizeof code, "\\U%08x", point);
            literal += code;
        } else {
            std::snprintf(code, sizeof code, "\\u%04x", static_cast<unsigned>(unit));
            literal += code;
        }
    }
    return literal + '"';
}

// A text as part of a comment line: on one line, and not ending with what would continue it.
std::string CommentText(const TString& text) {
    std::string comment = text.ToUtf8();
    for (char& character : comment) {
        if (static_cast<unsigned char>(character) < 0x20) {
            character = ' ';
        }
    }
    while (!comment.empty() && (comment.back() == '\\' || comment.back() == ' ' || comment.ends_with("?\?/"))) {
        comment.pop_back();
    }
    return comment;
}

// The names of one namespace in C++.
struct CppNames {
    std::string base;                    // "View", as in kFirstViewID and AddViewParameters
    std::string ids;                     // the enumeration's
    std::vector<std::string> constants;  // those of the parameters, in their order
    bool hexadecimal;                    // ranges that are written so by people
};

// The name, or the name with a suffix when it is taken.
std::string Unique(std::set<std::string>& taken, const std::string& name, const std::string& suffix) {
    std::string unique = taken.contains(name) ? name + "_" + suffix : name;
    while (!taken.insert(unique).second) {
        unique += '_';
    }
    return unique;
}

std::string IdSuffix(int id) {
    std::string digits = std::to_string(id);
    std::replace(digits.begin(), digits.end(), '-', 'm');
    return digits;
}

std::vector<CppNames> NamesOf(const Vocabulary& vocabulary) {
    std::vector<CppNames> all;
    std::set<std::string> bases;
    std::set<std::string> enumerations;
    for (const NamespaceDeclaration& nameSpace : vocabulary.GetNamespaces()) {
        const std::string number = std::to_string(all.size() + 1);
        CppNames names;
        const std::string base = Capitalised(nameSpace.name);
        const bool standsAlone = !base.empty() && (base[0] < '0' || base[0] > '9');
        names.base = Unique(bases, standsAlone ? base : "Namespace" + base, number);
        names.ids =
            Unique(enumerations, nameSpace.cppIds.empty() ? names.base + "ID" : nameSpace.cppIds.ToUtf8(), number);
        names.hexadecimal = nameSpace.firstId > 0xFFFF;
        std::set<std::string> constants;
        for (const ParameterDeclaration& parameter : nameSpace.parameters) {
            const std::string name = Capitalised(parameter.name);
            names.constants.push_back(
                Unique(constants, "k" + (name.empty() ? "Parameter" : name), IdSuffix(parameter.id)));
        }
        all.push_back(std::move(names));
    }
    return all;
}

// INT_MIN has no literal of its own.
std::string IdLiteral(int id, bool hexadecimal) {
    if (id == std::numeric_limits<int>::min()) {
        return "-2147483647 - 1";
    }
    if (!hexadecimal) {
        return std::to_string(id);
    }
    char text[16];
    std::snprintf(text, sizeof text, "0x%08x", static_cast<unsigned>(id));
    return text;
}

// What a parameter is, in words: "list of double", "structure", "map of WhiskerEnd; never written".
std::string KindInWords(const ParameterDeclaration& parameter) {
    const std::string type = parameter.HasType() ? std::string(parameter.type->cppType) : std::string();
    std::string words;
    switch (parameter.kind) {
        case DeclaredKind::Value:
            words = type;
            break;
        case DeclaredKind::List:
            words = "list of " + type;
            break;
        case DeclaredKind::Map:
            words = "map of " + type;
            break;
        case DeclaredKind::StructureList:
            words = "list of structures";
            break;
        case DeclaredKind::StructureMap:
            words = "map of structures";
            break;
        default:
            words = TString(ToText(parameter.kind)).ToUtf8();
    }
    if (parameter.listForm) {
        words += " in the form of a list";
    }
    return parameter.unserializable ? words + "; never written" : words;
}

std::string SerializerOf(const ParameterDeclaration& parameter) {
    if (!parameter.cppSerializer.empty()) {
        return "new " + parameter.cppSerializer.ToUtf8();
    }
    if (!parameter.HasType()) {
        return parameter.listForm ? "new BagStructureSerializer(BagStructureSerializer::List)"
                                  : "new BagStructureSerializer";
    }
    if (parameter.type->form == TextForm::AnyText) {
        return "new TStringSerializer";
    }
    return "new ParameterTypeSerializer<" + std::string(parameter.type->cppType) + ">";
}

const char* OperationOf(DeclaredKind kind) {
    constexpr const char* kOperations[] = {"AddSimple",    "AddList",          "AddMap",         "AddBag",
                                           "AddStructure", "AddStructureList", "AddStructureMap"};
    return kOperations[static_cast<std::size_t>(kind)];
}

class HeaderWriter {
public:
    HeaderWriter(const Vocabulary& vocabulary, const std::string& origin)
        : m_vocabulary(vocabulary), m_origin(origin), m_names(NamesOf(vocabulary)) {}

    std::string Write() {
        WriteTop();
        for (std::size_t i = 0; i < m_names.size(); ++i) {
            WriteIdentifiers(m_vocabulary.GetNamespaces()[i], m_names[i]);
        }
        for (std::size_t i = 0; i < m_names.size(); ++i) {
            WriteParameters(m_vocabulary.GetNamespaces()[i], m_names[i]);
        }
        WriteRegistration();
        if (!m_vocabulary.GetCpp().nameSpace.empty()) {
            m_out << "\n}  // namespace " << m_vocabulary.GetCpp().nameSpace << "\n";
        }
        return m_out.str();
    }

private:
    void WriteTop() {
        m_out << "// Made from " << CommentText(TString::FromUtf8(m_origin))
              << " by qvpres generate --cpp; do not edit.\n// clang-format off\n";
        if (!m_vocabulary.GetDescription().empty()) {
            m_out << "//\n// " << CommentText(m_vocabulary.GetDescription()) << "\n";
        }
        m_out << "#pragma once\n\n#include <qvpreslayer/qvpreslayer.h>\n";
        if (!m_vocabulary.GetCpp().includes.empty()) {
            m_out << "\n";
        }
        for (const std::string& include : m_vocabulary.GetCpp().includes) {
            m_out << "#include \"" << include << "\"\n";
        }
        if (!m_vocabulary.GetCpp().nameSpace.empty()) {
            m_out << "\nnamespace " << m_vocabulary.GetCpp().nameSpace << " {\n";
        }
    }

    void WriteIdentifiers(const NamespaceDeclaration& nameSpace, const CppNames& names) {
        const std::string type = names.base;
        m_out << "\n";
        if (!nameSpace.description.empty()) {
            m_out << "// " << CommentText(nameSpace.description) << "\n";
        }
        m_out << "inline constexpr const wchar_t* k" << type << "Namespace = " << Literal(nameSpace.name) << ";\n"
              << "inline constexpr int kFirst" << type << "ID = " << IdLiteral(nameSpace.firstId, names.hexadecimal)
              << ";\n"
              << "inline constexpr int kLast" << type << "ID = " << IdLiteral(nameSpace.lastId, names.hexadecimal)
              << ";\n";
        if (nameSpace.parameters.empty()) {
            return;
        }
        m_out << "\nnamespace " << names.ids << " {\nenum : int {\n";
        for (std::size_t i = 0; i < nameSpace.parameters.size(); ++i) {
            const ParameterDeclaration& parameter = nameSpace.parameters[i];
            m_out << "    " << names.constants[i] << " = " << IdLiteral(parameter.id, names.hexadecimal) << ",  // "
                  << KindInWords(parameter);
            if (const std::string description = CommentText(parameter.description); !description.empty()) {
                m_out << ": " << description;
            }
            m_out << "\n";
        }
        m_out << "};\n}  // namespace " << names.ids << "\n";
    }

    void WriteParameters(const NamespaceDeclaration& nameSpace, const CppNames& names) {
        m_out << "\n// The parameters of " << Literal(nameSpace.name).substr(1) << ".\n"
              << "inline void Add" << names.base << "Parameters(AbstractParamAdder&"
              << (nameSpace.parameters.empty() ? "" : " adder") << ") {\n";
        for (std::size_t i = 0; i < nameSpace.parameters.size(); ++i) {
            const ParameterDeclaration& parameter = nameSpace.parameters[i];
            m_out << "    adder." << OperationOf(parameter.kind) << "(" << names.ids << "::" << names.constants[i]
                  << ", " << Literal(parameter.name) << ", " << Literal(parameter.shortName);
            if (parameter.kind != DeclaredKind::Bag) {
                m_out << ", " << SerializerOf(parameter);
            }
            m_out << ");\n";
        }
        m_out << "}\n";
    }

    void WriteRegistration() {
        m_out << "\n// Registers all of the above, and the library's own namespace where the registry has none.\n"
              << "inline void RegisterVocabulary(ParametersRegistry& registry) {\n"
              << "    if (!registry.HasNamespace(L\"qvcore\")) {\n"
              << "        RegisterCoreNamespaceParameters(registry, L\"qvcore\");\n"
              << "    }\n";
        const auto& all = m_vocabulary.GetNamespaces();
        for (const CppNames& names : m_names) {
            m_out << "    registry.RegisterNamespace(k" << names.base << "Namespace, Add" << names.base
                  << "Parameters, kFirst" << names.base << "ID, kLast" << names.base << "ID, false);\n";
        }
        for (std::size_t i = 0; i < m_names.size(); ++i) {
            if (!all[i].fallback.empty()) {
                m_out << "    registry.SetFallback(k" << m_names[i].base << "Namespace, " << Literal(all[i].fallback)
                      << ");\n";
            }
        }
        for (std::size_t i = 0; i < m_names.size(); ++i) {
            for (std::size_t j = 0; j < all[i].parameters.size(); ++j) {
                if (all[i].parameters[j].unserializable) {
                    m_out << "    registry.AddUnserializable(" << m_names[i].ids << "::" << m_names[i].constants[j]
                          << ");\n";
                }
            }
        }
        for (const int id : m_vocabulary.GetUnserializable()) {
            m_out << "    registry.AddUnserializable(" << IdLiteral(id, false) << ");\n";
        }
        m_out << "}\n";
    }

    const Vocabulary& m_vocabulary;
    const std::string& m_origin;
    std::vector<CppNames> m_names;
    std::ostringstream m_out;
};

}  // namespace

std::string ToCppHeader(const Vocabulary& vocabulary, const std::string& origin) {
    return HeaderWriter(vocabulary, origin).Write();
}

}  // namespace qvpres
