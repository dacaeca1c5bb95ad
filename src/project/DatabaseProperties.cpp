#include "project/DatabaseProperties.h"

#include "project/XmlValues.h"
#include "services/FailureHandler.h"

namespace kv {

void DatabaseProperties::Load(const XMLNode& e) {
  using xmlvalue::Attr;
  using xmlvalue::IsTrue;
  guard("DatabaseProperties", [&] {
    mDocumentViewSource = IsTrue(Attr(e, "DocumentViewSource"));
    mDocumentTriggerSource = IsTrue(Attr(e, "DocumentTriggerSource"));
    mDocumentProcedureSource = IsTrue(Attr(e, "DocumentProcedureSource"));
    mRetainTaggedComments = IsTrue(Attr(e, "RetainTaggedComments"));
  });
}

void DatabaseProperties::Save(XMLNode& e) const {
  using xmlvalue::Bool;
  e.SetAttribute("DocumentViewSource", Bool(mDocumentViewSource));
  e.SetAttribute("DocumentTriggerSource", Bool(mDocumentTriggerSource));
  e.SetAttribute("DocumentProcedureSource", Bool(mDocumentProcedureSource));
  e.SetAttribute("RetainTaggedComments", Bool(mRetainTaggedComments));
}

}  // namespace kv
