// The subscribers to an object's events. They are held weakly, so a subscriber that has gone is
// skipped and dropped rather than kept alive.
#pragma once

#include <memory>
#include <vector>

namespace kv {

template <class Events>
class Subscribers {
 public:
  void Add(std::weak_ptr<Events> subscriber) { mList.push_back(std::move(subscriber)); }

  // Drops `subscriber`, and any subscriber that has gone.
  void Remove(const Events* subscriber) {
    std::erase_if(mList, [&](const std::weak_ptr<Events>& s) {
      auto locked = s.lock();
      return !locked || locked.get() == subscriber;
    });
  }

  // Calls `raise` on each live subscriber in the order they subscribed.
  template <class F>
  void Raise(F&& raise) const {
    // A copy, because a handler may subscribe or unsubscribe while the event runs.
    const auto subscribers = mList;
    for (const auto& weak : subscribers)
      if (auto subscriber = weak.lock()) raise(*subscriber);
  }

 private:
  std::vector<std::weak_ptr<Events>> mList;
};

}  // namespace kv
