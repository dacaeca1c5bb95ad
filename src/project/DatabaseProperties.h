// Settings for documenting databases.
#pragma once

#include "project/ProjectSettingsBase.h"

namespace kv {

class XMLNode;

class DatabaseProperties : public ProjectSettingsBase {
 public:
  bool DocumentViewSource() const { return mDocumentViewSource; }
  void DocumentViewSource(bool v) { Set(mDocumentViewSource, v); }
  bool DocumentTriggerSource() const { return mDocumentTriggerSource; }
  void DocumentTriggerSource(bool v) { Set(mDocumentTriggerSource, v); }
  bool DocumentProcedureSource() const { return mDocumentProcedureSource; }
  void DocumentProcedureSource(bool v) { Set(mDocumentProcedureSource, v); }
  bool RetainTaggedComments() const { return mRetainTaggedComments; }
  void RetainTaggedComments(bool v) { Set(mRetainTaggedComments, v); }

  void Load(const XMLNode& e);
  void Save(XMLNode& e) const;

 private:
  bool mDocumentViewSource = true;
  bool mDocumentTriggerSource = true;
  bool mDocumentProcedureSource = true;
  bool mRetainTaggedComments = false;
};

}  // namespace kv
