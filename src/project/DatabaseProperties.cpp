#include "project/DatabaseProperties.h"

#include "files/XmlValues.h"
#include "host/FailureHandler.h"
#include "kavrel/Failure.h"

namespace kv {

void DatabaseProperties::Load(const XMLNode& e) {
  using xmlvalue::Attr;
  using xmlvalue::IsTrue;
  // Every value present is read; a missing one fails to the caller once all are through.
  bool failed = false;
  auto read = [&](auto&& body) { failed |= !ignoreFailure(body); };
  read([&] { mDocumentViewSource = IsTrue(Attr(e, "DocumentViewSource")); });
  read([&] { mDocumentTriggerSource = IsTrue(Attr(e, "DocumentTriggerSource")); });
  read([&] { mDocumentProcedureSource = IsTrue(Attr(e, "DocumentProcedureSource")); });
  read([&] { mRetainTaggedComments = IsTrue(Attr(e, "RetainTaggedComments")); });
  if (failed) throw Failure(err::InvalidProcedureCall, "The database settings are incomplete");
}

void DatabaseProperties::Save(XMLNode& e) const {
  using xmlvalue::Bool;
  e.SetAttribute("DocumentViewSource", Bool(mDocumentViewSource));
  e.SetAttribute("DocumentTriggerSource", Bool(mDocumentTriggerSource));
  e.SetAttribute("DocumentProcedureSource", Bool(mDocumentProcedureSource));
  e.SetAttribute("RetainTaggedComments", Bool(mRetainTaggedComments));
}

}  // namespace kv
