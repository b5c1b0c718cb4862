#include "tools/qvpres/show/Description.h"

#include "tools/qvpres/text/Wording.h"

namespace qvpres {

namespace {

// A value as it stands in the text, nested arrays of runs included.
std::string Spelled(const JSONDocument& document, JSONDocument::Index value) {
    switch (document[value].kind) {
        case JSONKind::String:
            return Quoted(ToUtf8(document.Text(value)));
        case JSONKind::Object:
            return "{…}";
        case JSONKind::Array: {
            std::string text;
            for (auto item = value + 1; item != document.Next(value); item = document.Next(item)) {
                text += (text.empty() ? "" : ", ") + Spelled(document, item);
            }
            return "[" + text + "]";
        }
        default:
            return ToUtf8(document.Text(value));
    }
}

std::string TypeOf(const ParameterText& text, ParameterText::Node node) {
    const TextNode& it = text[node];
    switch (it.role) {
        case Role::Root:
            return std::string(KindName(text.KindOf(node)));
        case Role::Unknown:
            return "unknown name";
        case Role::Element:
            return "structure";
        case Role::Entry:
            if (it.info->kind == PTC_StructureMap) {
                return "structure";
            }
            return it.declaration == nullptr ? "" : ToUtf8(it.declaration->type->name);
        default:
            return it.declaration == nullptr ? std::string(KindName(it.info->kind)) : TypeName(*it.declaration);
    }
}

std::string RemarkOn(const ParameterText& text, ParameterText::Node node) {
    const TextNode& it = text[node];
    if (it.overridden) {
        return "not read: the name comes again";
    }
    if (it.role == Role::Parameter && text.KindOf(node) == JSONKind::Null) {
        return "null: as if it were not there";
    }
    return "";
}

ListDescription DescribeList(const ParameterText& text, ParameterText::Node node, std::size_t mostItems) {
    const JSONDocument& document = text.Document();
    const JSONDocument::Index array = text[node].value;
    ListDescription list;
    list.numbers = NumberList::From(text, node);
    for (auto item = array + 1; item != document.Next(array); item = document.Next(item)) {
        ++list.count;
        if (list.firstItems.size() < mostItems) {
            list.firstItems.push_back(Spelled(document, item));
        }
    }
    list.complete = list.firstItems.size() == list.count;
    if (list.numbers) {
        list.count = list.numbers->Total().elements;
    }
    return list;
}

}  // namespace

Description Describe(const ParameterText& text, ParameterText::Node node, std::size_t mostItems) {
    const TextNode& it = text[node];
    Description result;
    result.type = TypeOf(text, node);
    result.remark = RemarkOn(text, node);
    result.name = it.role == Role::Parameter ? it.info->verboseName.ToUtf8() : ToUtf8(it.name);
    if (it.role == Role::Parameter) {
        result.id = it.info->id;
        result.shortName = it.info->shortName.ToUtf8();
    }
    result.inside = text.Children(node).size();
    if (result.inside != 0) {
        return result;
    }
    const JSONDocument& document = text.Document();
    const JSONKind kind = text.KindOf(node);
    if (kind == JSONKind::Array) {
        result.list = DescribeList(text, node, mostItems);
    } else if (!JSONDocument::IsContainer(kind)) {
        result.value = Spelled(document, it.value);
    } else {
        result.value = document.Next(it.value) == it.value + 1 ? "{}" : "{…}";
    }
    return result;
}

std::string ListInWords(const ListDescription& list, std::size_t sparklineWidth) {
    if (list.complete) {
        std::string text;
        for (const std::string& item : list.firstItems) {
            text += (text.empty() ? "" : ", ") + item;
        }
        return "[" + text + "]";
    }
    if (!list.numbers) {
        return Counted(list.count, "item") + ": " + list.firstItems.front() + ", …";
    }
    const NumberRange& total = list.numbers->Total();
    std::string text = Counted(total.elements, "number");
    if (total.numbers < total.elements) {
        text += ", " + Counted(total.elements - total.numbers, "null");
    }
    if (total.numbers != 0) {
        text += ": " + NumberText(total.low) + " to " + NumberText(total.high);
        text += sparklineWidth == 0 ? "" : "  " + Sparkline(*list.numbers, sparklineWidth);
    }
    if (list.numbers->PackedRuns() != 0) {
        text += (sparklineWidth == 0 ? "; " : "  ") + Counted(list.numbers->PackedRuns(), "run") + " hold " +
                Percent(total.packed, total.elements);
    }
    return text;
}

}  // namespace qvpres
