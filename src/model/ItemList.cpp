#include "kavrel/model/ItemList.h"

namespace kv {

Variant ItemListView::get(std::string_view member) const {
  if (text::equalsIgnoreCase(member, "Count")) return Count();
  return Object::get(member);
}

Variant ItemListView::call(std::string_view member, const Arguments& args) {
  if (text::equalsIgnoreCase(member, "Item") && !args.empty()) return Item(args[0]);
  if (args.empty()) return get(member);
  return Object::call(member, args);
}

ItemPtr ItemListView::Item(const Variant& indexOrName) const {
  const Variant::Type type = indexOrName.type();
  if (type == Variant::Type::Integer || type == Variant::Type::Double) {
    const long index = long(indexOrName.toInteger());
    if (index < 1 || index > Count()) throw Failure(err::SubscriptOutOfRange, "Subscript out of range");
    return At(index - 1);
  }
  const std::string name = indexOrName.toString();
  for (long i = 0; i < Count(); ++i)
    if (ItemPtr item = At(i); item && text::equalsIgnoreCase(item->Name(), name)) return item;
  throw Failure(err::InvalidProcedureCall, "No item named '" + name + "'");
}

}  // namespace kv
