// What the table of contents and the index need from a doc type's template and provider.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace kv {

class DataProvider;
class INamespaceProvider;
class KVProject;
class NamespaceDef;
class Template;

// A data provider of its own for `Provider`'s items: a clone of the provider's, or a common
// provider of the project when the provider brings none. The caller may move it about freely
// without disturbing the page that is being written.
std::shared_ptr<DataProvider> ContentsDataProvider(INamespaceProvider* Provider, KVProject& Project);

// The first namespace definition of that name (ignoring case) in the template, at any depth.
std::shared_ptr<NamespaceDef> FindNamespaceDef(const Template& Template, std::string_view Name);

// `Text` with its $$key$$ phrases from the current doc type's template.
std::string ProjectPhrases(KVProject& Project, std::string_view Text);

}  // namespace kv
