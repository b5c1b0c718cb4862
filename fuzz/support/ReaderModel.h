// JSON texts to bags, the slow way: the rules of docs/json.md word for word. A recursive reader makes a tree of values,
// one unit at a time; another one fills bags from it, through the registry and the serializers alone. Failures are the
// library's own exceptions, with their place.
#pragma once

#include <cmath>
#include <cstdlib>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

#include "fuzz/support/EventTree.h"
#include "fuzz/support/TextModels.h"
#include "support/RealTextModel.h"

namespace reader_model {

struct Value;

struct Member {
    TString name;
    std::size_t nameAt;
    std::vector<Value> value;  // one
};

struct Value {
    JSONKind kind = JSONKind::Null;
    std::size_t at = 0;
    TString text;  // of scalars: of a string what it spells, of a number its token
    std::vector<Value> elements;
    std::vector<Member> members;
};

// Where the first unit stands that cannot.
struct NotValid {
    std::size_t at;
};

class Grammar {
public:
    explicit Grammar(const TString& text) : m_text(text) {}

    Value Read() {
        Blanks();
        return ReadValue(0);
    }

private:
    // U+FFFF stands for the end: no rule knows it.
    char16_t Unit() const { return m_at < m_text.size() ? m_text[m_at] : u'\uFFFF'; }
    bool IsEnd() const { return m_at >= m_text.size(); }
    bool IsDigit() const { return Unit() >= u'0' && Unit() <= u'9'; }
    [[noreturn]] void Refuse() const { throw NotValid{m_at}; }
    void Expect(char16_t unit) {
        if (IsEnd() || Unit() != unit) {
            Refuse();
        }
        ++m_at;
    }
    bool Take(char16_t unit) {
        const bool taken = !IsEnd() && Unit() == unit;
        m_at += taken ? 1 : 0;
        return taken;
    }

    void Blanks() {
        for (;;) {
            if (Take(u'/')) {
                Comment();
            } else if (!Take(u' ') && !Take(u'\t') && !Take(u'\n') && !Take(u'\r')) {
                return;
            }
        }
    }

    void Comment() {
        if (Take(u'/')) {
            while (!IsEnd() && !Take(u'\n')) {
                ++m_at;
            }
            return;
        }
        Expect(u'*');
        while (!IsEnd()) {
            if (Take(u'*')) {
                if (Take(u'/')) {
                    return;
                }
            } else {
                ++m_at;
            }
        }
        Refuse();
    }

    Value ReadValue(int depth) {
        Value value;
        value.at = m_at;
        if (Unit() == u'{' || Unit() == u'[') {
            if (depth == PresLayerLimits::GetJSONDepth()) {
                Refuse();
            }
            if (Take(u'{')) {
                value.kind = JSONKind::Object;
                Members(value, depth + 1);
            } else {
                Expect(u'[');
                value.kind = JSONKind::Array;
                Elements(value, depth + 1);
            }
        } else if (Unit() == u'"') {
            value.kind = JSONKind::String;
            value.text = String();
        } else if (Unit() == u't' || Unit() == u'f' || Unit() == u'n') {
            value.kind = Unit() == u'n' ? JSONKind::Null : JSONKind::Bool;
            value.text = Unit() == u't' ? u"true" : Unit() == u'f' ? u"false" : u"null";
            for (const char16_t unit : value.text.view()) {
                Expect(unit);
            }
        } else {
            Number(value);
        }
        return value;
    }

    void Members(Value& object, int depth) {
        Blanks();
        if (Take(u'}')) {
            return;
        }
        do {
            Blanks();
            const std::size_t at = m_at;
            if (Unit() != u'"') {
                Refuse();
            }
            TString name = String();
            Blanks();
            Expect(u':');
            Blanks();
            object.members.push_back({std::move(name), at, {ReadValue(depth)}});
            Blanks();
        } while (Take(u','));
        Expect(u'}');
    }

    void Elements(Value& array, int depth) {
        Blanks();
        if (Take(u']')) {
            return;
        }
        do {
            Blanks();
            array.elements.push_back(ReadValue(depth));
            Blanks();
        } while (Take(u','));
        Expect(u']');
    }

    TString String() {
        TString text;
        Expect(u'"');
        while (!Take(u'"')) {
            if (IsEnd() || (Unit() < 0x20 && Unit() != 0)) {
                Refuse();
            }
            text += Take(u'\\') ? Escape() : m_text[m_at++];
        }
        return text;
    }

    char16_t Escape() {
        static const std::map<char16_t, char16_t> s_short = {{u'"', u'"'},  {u'\\', u'\\'}, {u'/', u'/'},
                                                             {u'b', u'\b'}, {u'f', u'\f'},  {u'n', u'\n'},
                                                             {u'r', u'\r'}, {u't', u'\t'}};
        if (Take(u'u')) {
            std::string digits;
            for (; digits.size() < 4; ++m_at) {
                if (std::u16string_view(u"0123456789abcdefABCDEF").find(Unit()) == std::u16string_view::npos) {
                    Refuse();
                }
                digits += static_cast<char>(Unit());
            }
            return static_cast<char16_t>(std::stoul(digits, nullptr, 16));
        }
        if (IsEnd() || !s_short.contains(Unit())) {
            Refuse();
        }
        return s_short.at(m_text[m_at++]);
    }

    void Digits() {
        if (!IsDigit()) {
            Refuse();
        }
        while (IsDigit()) {
            ++m_at;
        }
    }

    void Number(Value& value) {
        bool isReal = false;
        Take(u'-');
        if (!Take(u'0')) {
            Digits();
        }
        if (Take(u'.')) {
            isReal = true;
            Digits();
        }
        if (Take(u'e') || Take(u'E')) {
            isReal = true;
            if (!Take(u'+')) {
                Take(u'-');
            }
            Digits();
        }
        value.text = m_text.view().substr(value.at, m_at - value.at);
        if (std::isinf(std::strtod(value.text.ToUtf8().c_str(), nullptr))) {
            m_at = value.at;
            Refuse();
        }
        bool isSigned = false;
        bool isUnsigned = false;
        value.text.toLongLong(&isSigned);
        value.text.toULongLong(&isUnsigned);
        value.kind = !isReal && (isSigned || isUnsigned) ? JSONKind::Integer : JSONKind::Real;
    }

    const TString& m_text;
    std::size_t m_at = 0;
};

// Fills a bag from the tree. The place is that of the value at hand.
class Reader {
public:
    Reader(const TString& text, TString space, bool shortNames, bool lookupFlag)
        : m_text(text), m_namespace(std::move(space)), m_shortNames(shortNames), m_lookupFlag(lookupFlag) {}

    RefCntPtr<IParameters> Read() {
        const PresLayerLimits::ExpansionBudgetScope budget;
        Value root;
        try {
            root = Grammar(m_text).Read();
        } catch (const NotValid& refusal) {
            JSONParseException failure(Messages::kJSONNotValid);
            failure.SetLocation(Place(refusal.at));
            throw failure;
        }
        if (root.kind != JSONKind::Object) {
            throw std::runtime_error("the JSON root is " + KindName(root.kind) + ", not object");
        }
        try {
            return Bag(root);
        } catch (QuorvelException& failure) {
            auto* located = dynamic_cast<TextLocated*>(&failure);
            if (located != nullptr) {
                located->SetLocation(Place(m_at));
            }
            throw;
        }
    }

private:
    static ParametersRegistry& Registry() { return ParametersRegistry::Get(); }

    static std::string KindName(JSONKind kind) {
        constexpr const char* kNames[] = {"object", "array", "string", "bool", "integer", "real", "null"};
        return kNames[static_cast<std::size_t>(kind)];
    }

    TextLocation Place(std::size_t offset) const {
        TextLocation place;
        place.line = 1;
        place.column = 1;
        place.offset = offset;
        for (std::size_t i = 0; i < offset; ++i) {
            place.column = m_text[i] == u'\n' ? 1 : place.column + 1;
            place.line += m_text[i] == u'\n' ? 1 : 0;
        }
        place.path = m_path;
        return place;
    }

    // Does something one step further down the path.
    template <class Action>
    auto Under(const TString& step, std::size_t at, Action&& action) {
        const TString before = m_path;
        m_path += TString(L"/") + step;
        m_at = at;
        auto result = action();
        m_path = before;
        return result;
    }

    static TString ScalarText(const Value& value) {
        switch (value.kind) {
            case JSONKind::String:
            case JSONKind::Bool:
                return value.text;
            case JSONKind::Integer:
                return fuzz::HandedOn(value.text);
            case JSONKind::Real:
                return TString::FromUtf8(RealTextModel(std::strtod(value.text.ToUtf8().c_str(), nullptr), 14));
            default:
                return {};
        }
    }

    static std::vector<TString> ScalarTexts(const Value& array) {
        std::vector<TString> texts;
        for (const Value& element : array.elements) {
            texts.push_back(ScalarText(element));
        }
        return texts;
    }

    // In the order of names, of equal ones the last.
    static std::map<TString, const Member*> Sorted(const Value& object) {
        std::map<TString, const Member*> members;
        for (const Member& member : object.members) {
            members[member.name] = &member;
        }
        return members;
    }

    RefCntPtr<IParameters> Bag(const Value& object) {
        const RefCntPtr<IParameters> bag = Registry().CreateParameters();
        for (const auto& entry : Sorted(object)) {
            Under(entry.first, entry.second->nameAt, [&] { return ApplyMember(*bag, *entry.second); });
        }
        return bag;
    }

    bool ApplyMember(IParameters& bag, const Member& member) {
        const Value& value = member.value[0];
        const TString sought = m_shortNames ? member.name : text_model::Dashed(member.name);
        const int id = Registry().GetID(m_namespace, sought, m_lookupFlag);
        const ParameterTypeCategory kind = Registry().GetType(id);
        m_at = value.at;
        if (!Apply(bag, id, kind, value)) {
            JSONParseException failure(Messages::kJSONKindMismatch, sought);
            failure.SetMismatch(id, kind, value.kind);
            throw failure;
        }
        return true;
    }

    // False when the value does not suit the kind.
    bool Apply(IParameters& bag, int id, ParameterTypeCategory kind, const Value& value) {
        switch (value.kind) {
            case JSONKind::Null:
                return true;
            case JSONKind::Array:
                return kind == PTC_List        ? List(bag, id, value)
                       : kind == PTC_Structure ? ListForm(bag, id, value)
                                               : kind == PTC_StructureList && Structures(bag, id, value);
            case JSONKind::Object:
                return kind == PTC_Map            ? Map(bag, id, value)
                       : kind == PTC_StructureMap ? StructureMap(bag, id, value)
                       : kind == PTC_Bag          ? Set(bag, id, AsValue(Bag(value)))
                                                  : kind == PTC_Structure && Structure(bag, id, value);
            default:
                return (kind == PTC_Text || kind == PTC_Number || kind == PTC_Bool) && Scalar(bag, id, value);
        }
    }

    static RefCntPtr<IParameter> AsValue(const RefCntPtr<IParameters>& bag) { return MakeRefCnt<BagParameter>(bag); }

    static bool Set(IParameters& bag, int id, const RefCntPtr<IParameter>& value) {
        bag.SetParameter(id, value);
        return true;
    }

    static bool Scalar(IParameters& bag, int id, const Value& value) {
        try {
            return Set(bag, id, Registry().GetValueSerializer(id)->FromString(ScalarText(value)));
        } catch (const std::exception&) {
            throw ParameterParseException(id);
        }
    }

    static bool List(IParameters& bag, int id, const Value& array) {
        std::vector<TString> texts;
        std::vector<RunRecord> runs;
        for (std::size_t i = 0; i < array.elements.size(); ++i) {
            if (array.elements[i].kind == JSONKind::Array) {
                runs.emplace_back(static_cast<int>(i), ScalarTexts(array.elements[i]));
            } else {
                texts.push_back(ScalarText(array.elements[i]));
            }
        }
        return Set(bag, id, Registry().GetListSerializer(id)->FromStringList(texts, runs));
    }

    static bool Map(IParameters& bag, int id, const Value& object) {
        std::map<TString, TString> texts;
        for (const auto& [key, member] : Sorted(object)) {
            texts[key] = ScalarText(member->value[0]);
        }
        return Set(bag, id, Registry().GetMapSerializer(id)->FromStringMap(texts));
    }

    static RefCntPtr<IParameters> ListFormBag(int id, const Value& array) {
        const RefCntPtr<IParameters> bag = Registry().CreateParameters();
        SetParameterValue(*bag, id, ScalarTexts(array));
        return bag;
    }

    static bool ListForm(IParameters& bag, int id, const Value& array) {
        const RefCntPtr<IStructureSerializer> serializer(Registry().GetStructureSerializer(id));
        return !serializer->IsListForm() || Set(bag, id, serializer->FromParameters(id, ListFormBag(id, array)));
    }

    bool Structure(IParameters& bag, int id, const Value& object) {
        const RefCntPtr<IStructureSerializer> serializer(Registry().GetStructureSerializer(id));
        const RefCntPtr<IParameters> members = Bag(object);
        return Set(bag, id, serializer ? serializer->FromParameters(id, members) : AsValue(members));
    }

    static void RequireKind(const Value& value, JSONKind kind) {
        if (value.kind != kind) {
            throw std::runtime_error("a JSON value is " + KindName(value.kind) + ", not " + KindName(kind));
        }
    }

    bool Structures(IParameters& bag, int id, const Value& array) {
        const RefCntPtr<IStructureSerializer> serializer(Registry().GetStructureListSerializer(id));
        std::vector<RefCntPtr<IParameter>> elements;
        for (const Value& element : array.elements) {
            const TString position = TString::FromUtf8(std::to_string(elements.size()));
            elements.push_back(Under(position, element.at, [&] {
                RequireKind(element, serializer->IsListForm() ? JSONKind::Array : JSONKind::Object);
                return serializer->FromParameters(id,
                                                  serializer->IsListForm() ? ListFormBag(id, element) : Bag(element));
            }));
        }
        return Set(bag, id, serializer->MakeList(elements));
    }

    bool StructureMap(IParameters& bag, int id, const Value& object) {
        const RefCntPtr<IStructureSerializer> serializer(Registry().GetStructureMapSerializer(id));
        std::map<TString, RefCntPtr<IParameter>> entries;
        for (const auto& [key, member] : Sorted(object)) {
            const Value& value = member->value[0];
            entries[key] = Under(key, value.at, [&] {
                if (value.kind == JSONKind::Null) {
                    return serializer->FromParameters(id, nullptr);
                }
                RequireKind(value, JSONKind::Object);
                return serializer->FromParameters(id, Bag(value));
            });
        }
        return Set(bag, id, serializer->MakeMap(entries));
    }

    const TString& m_text;
    TString m_namespace;
    bool m_shortNames;
    bool m_lookupFlag;
    std::size_t m_at = 0;
    TString m_path;
};

}  // namespace reader_model
