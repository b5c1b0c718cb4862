// Lists are repeated and packed, maps are map<string, ...>, a nested bag is a message of the type that it stands in,
// and records are messages of their own type. The syntax is that of presence, so that a zero is written too.
#include "ProtobufSchema.h"

namespace compare {

namespace {

using google::protobuf::DescriptorProto;
using google::protobuf::FieldDescriptorProto;

FieldDescriptorProto::Type TypeOf(FieldKind kind) {
    switch (kind) {
        case FieldKind::Int:
        case FieldKind::IntList:
            return FieldDescriptorProto::TYPE_INT32;
        case FieldKind::Double:
        case FieldKind::DoubleList:
            return FieldDescriptorProto::TYPE_DOUBLE;
        case FieldKind::Bool:
            return FieldDescriptorProto::TYPE_BOOL;
        case FieldKind::Text:
        case FieldKind::TextList:
            return FieldDescriptorProto::TYPE_STRING;
        default:
            return FieldDescriptorProto::TYPE_MESSAGE;
    }
}

bool IsRepeated(FieldKind kind) {
    return kind == FieldKind::IntList || kind == FieldKind::DoubleList || kind == FieldKind::TextList ||
           kind == FieldKind::TextMap || kind == FieldKind::RecordList || kind == FieldKind::RecordMap;
}

void AddField(DescriptorProto& message, const std::string& name, int number, FieldDescriptorProto::Type type,
              const std::string& typeName) {
    FieldDescriptorProto& field = *message.add_field();
    field.set_name(name);
    field.set_number(number);
    field.set_type(type);
    field.set_label(FieldDescriptorProto::LABEL_OPTIONAL);
    if (!typeName.empty()) {
        field.set_type_name(typeName);
    }
}

// The entry type of a map in message, from text to valueType or to texts where that is empty.
void AddEntry(DescriptorProto& message, const std::string& name, const std::string& valueType) {
    DescriptorProto& entry = *message.add_nested_type();
    entry.set_name(name);
    entry.mutable_options()->set_map_entry(true);
    AddField(entry, "key", 1, FieldDescriptorProto::TYPE_STRING, "");
    AddField(entry, "value", 2,
             valueType.empty() ? FieldDescriptorProto::TYPE_STRING : FieldDescriptorProto::TYPE_MESSAGE, valueType);
}

void AddMembers(DescriptorProto& message, const std::string& typeName, const std::vector<FieldShape>& fields) {
    int number = 0;
    for (const FieldShape& shape : fields) {
        const std::string suffix = std::to_string(++number);
        const std::string recordType = typeName + ".Record" + suffix;
        std::string fieldType;
        if (!shape.members.empty()) {
            DescriptorProto& record = *message.add_nested_type();
            record.set_name("Record" + suffix);
            AddMembers(record, recordType, shape.members);
            fieldType = recordType;
        }
        if (shape.kind == FieldKind::Bag) {
            fieldType = typeName;
        }
        if (shape.kind == FieldKind::TextMap || shape.kind == FieldKind::RecordMap) {
            // A map's entry type must be named after its field.
            AddEntry(message, "F" + suffix + "Entry", fieldType);
            fieldType = typeName + ".F" + suffix + "Entry";
        }
        AddField(message, "f" + suffix, number, TypeOf(shape.kind), fieldType);
        FieldDescriptorProto& field = *message.mutable_field(message.field_size() - 1);
        field.set_json_name(shape.name);
        if (IsRepeated(shape.kind)) {
            field.set_label(FieldDescriptorProto::LABEL_REPEATED);
        }
        if (shape.kind == FieldKind::IntList || shape.kind == FieldKind::DoubleList) {
            field.mutable_options()->set_packed(true);
        }
    }
}

}  // namespace

google::protobuf::FileDescriptorProto MakeProtobufSchema(const std::vector<FieldShape>& fields) {
    google::protobuf::FileDescriptorProto file;
    file.set_name("document.proto");
    file.set_syntax("proto2");
    DescriptorProto& message = *file.add_message_type();
    message.set_name("Document");
    AddMembers(message, ".Document", fields);
    return file;
}

}  // namespace compare
