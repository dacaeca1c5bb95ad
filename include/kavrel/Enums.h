// Enumerations shared by the project and the build.
#pragma once

namespace kv {

enum KVBuildResultEnum { BuildResultCompletedOK = 0, BuildResultCancelled = 1 };

enum KVHelpCompileResultEnum { HelpCompileOK = 0, HelpCompileCompletedWithErrorsOrWarnings = 1, HelpCompileFailed = 2 };

enum KVErrorLevel { KVWarning = 0, KVError = 1 };

enum RelationshipsFromEnum { rfAll = 0, rfMethodsOnly = 1, rfPropertiesOnly = 2 };

enum HelpDescriptionImportEnum { hdiCombine = 0, hdiUseIfBlank = 1, hdiNeverUse = 2, hdiAlwaysUseOverwrite = 3 };

}  // namespace kv
