// Relationships left out of diagrams.
#pragma once

#include <string>

#include "contracts/RecordCollection.h"

namespace kv {

class XMLNode;

class IgnoreRelationship {
 public:
  std::string QualifiedName;
  std::string ProcedureName;

  // Also reads the older form that named the project and component separately.
  void Load(const XMLNode& e);
  void Save(XMLNode& e) const;
};

class IgnoreRelationships : public TrackedCollection<IgnoreRelationship> {};

}  // namespace kv
