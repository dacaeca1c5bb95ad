#include "host/VariableDump.h"

#include <cxxabi.h>

#include <cstdlib>

#include "kavrel/Failure.h"
#include "kavrel/Object.h"
#include "kavrel/Text.h"

namespace kv {

namespace dumpdetail {

std::string escape(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    switch (c) {
      case '&': out += "&amp;"; break;
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      default: out += c;
    }
  }
  return out;
}

std::string textValue(std::string_view text, long limit) {
  if (text::length(text) <= limit) return escape(text);
  return "{Dump truncated at " + std::to_string(limit) + " characters}" + escape(text::left(text, limit));
}

std::string variantValue(const Variant& value, long limit) {
  switch (value.type()) {
    case Variant::Type::Empty: return "{Empty}";
    case Variant::Type::Null: return "{Null}";
    case Variant::Type::Object: return value.isNothing() ? "{Nothing}" : "{DataObject}";
    default: return textValue(value.toString(), limit);
  }
}

std::string doubleValue(double value) {
  return Variant(value).toString();
}

std::string recordValue(const std::type_info& type) {
  int status = 0;
  std::unique_ptr<char, decltype(&std::free)> demangled(abi::__cxa_demangle(type.name(), nullptr, nullptr, &status),
                                                        &std::free);
  std::string name = status == 0 && demangled ? demangled.get() : type.name();
  // The record's own name, without its namespaces.
  if (auto pos = name.rfind("::"); pos != std::string::npos && name.find('<') == std::string::npos)
    name.erase(0, pos + 2);
  return "{UDT - " + escape(name) + "}";
}

std::string uninitialisedArray(int dimension) {
  if (dimension <= 1) return "{UnInitialised Array}";
  return "{UnInitialised Array Dimension " + std::to_string(dimension) + "}";
}

std::string truncatedArray(long limit) {
  return "{Dump truncated at " + std::to_string(limit) + " elements}";
}

std::string tooManyDimensions(int dimensions) {
  return "{Cannot dump arrays with " + std::to_string(dimensions) + " dimensions}";
}

std::string elementStart(long index) {
  return "<Element Index=\"" + std::to_string(index) + "\">";
}

}  // namespace dumpdetail

Variables& Variables::add(Block block, std::string name, Formatter formatter) {
  mEntries.push_back({block, std::move(name), std::move(formatter)});
  return *this;
}

std::string Variables::text(long limit) const {
  auto block = [&](Block which) {
    std::string out;
    for (const Entry& e : mEntries) {
      if (e.block != which) continue;
      std::string content;
      try {
        content = e.formatter(limit);
      } catch (const Failure& f) {
        content = "{Error " + std::to_string(f.number()) + " formatting for output}";
      } catch (...) {
        content = "{Error " + std::to_string(err::AutomationError) + " formatting for output}";
      }
      out += "<" + e.name + ">" + content + "</" + e.name + ">";
    }
    return out;
  };
  return "<Variables>\r\n<LocalVariables>" + block(Block::Local) + "</LocalVariables>\r\n<ModuleVariables>" +
         block(Block::Field) + "</ModuleVariables>\r\n<GlobalVariables>{Disabled}</GlobalVariables>\r\n</Variables>" +
         "\r\n<Parameters>" + block(Block::Parameter) + "</Parameters>";
}

}  // namespace kv
