// The schema of a workload for protobuf, made at run time. Included by ProtobufPeer.cpp.
#pragma once

#include <google/protobuf/descriptor.pb.h>

#include <vector>

#include "Contestant.h"

namespace compare {

// A file with the message "Document", whose members are the fields under their JSON names.
google::protobuf::FileDescriptorProto MakeProtobufSchema(const std::vector<FieldShape>& fields);

}  // namespace compare
