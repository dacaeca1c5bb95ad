#include "host/FailureHandler.h"

#include "host/MessageBox.h"
#include "kavrel/ClassRegistry.h"
#include "kavrel/Failure.h"

namespace kv {

FailureReport describeCurrentFailure(std::string_view module, const std::source_location& where,
                                     std::string variables) {
  FailureReport report;
  report.version = std::to_string(KV_VERSION_MAJOR) + "." + std::to_string(KV_VERSION_MINOR) + "." +
                   std::to_string(KV_VERSION_PATCH);
  report.module = module;
  report.procedure = where.function_name();
  report.line = where.line();
  report.variables = std::move(variables);
  try {
    throw;
  } catch (const Failure& f) {
    report.number = f.number();
    report.description = f.what();
    report.procedure = f.where().function_name();
    report.line = f.where().line();
  } catch (const std::bad_alloc&) {
    report.number = err::OutOfMemory;
    report.description = "Out of memory";
  } catch (const std::exception& e) {
    report.number = err::AutomationError;
    report.description = e.what();
  } catch (...) {
    report.number = err::AutomationError;
    report.description = "Unknown failure";
  }
  return report;
}

std::string plainFailureMessage(const FailureReport& r) {
  return "KVObjects5 has encountered a problem. We are sorry for the inconvenience.\r\n\r\nModule: " + r.module +
         "\r\nProcedure: " + r.procedure + "\r\nLine Number: " + std::to_string(r.line) + "\r\n\r\n" + r.description +
         " (" + std::to_string(r.number) + ")";
}

bool ErrorHandler(const FailureReport& report) {
  // A host may install a report object under this class name; without one the plain message is
  // the full fallback.
  ObjectPtr reporter = ClassRegistry::instance().tryCreate("VelmoError.Error");
  if (reporter) {
    bool raiseAgain = false;
    ignoreFailure([&] {
      reporter->set("Product", report.product);
      reporter->set("Version", report.version);
      reporter->set("Module", report.module);
      reporter->set("Procedure", report.procedure);
      reporter->set("Line", long(report.line));
      reporter->set("Number", report.number);
      reporter->set("Description", report.description);
      reporter->set("Variables", report.variables);
      reporter->call("Show");
      raiseAgain = !reporter->get("Action").toString().empty();
    });
    return raiseAgain;
  }
  showHostMessage(plainFailureMessage(report), mb::OKOnly + mb::Critical, "Application Error");
  return false;
}

}  // namespace kv
