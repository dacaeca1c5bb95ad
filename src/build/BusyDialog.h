// The busy dialog a build shows while it runs: a title, a status line, an animation, a Cancel
// button and a stack of progress bars. Hosts implement it; the build driver only drives it.
#pragma once

#include <memory>
#include <string>

#include "services/Subscribers.h"

namespace kv {

class BusyDialogEvents {
 public:
  virtual ~BusyDialogEvents() = default;
  // The user pressed Cancel. Setting `Cancel` keeps the dialog from acting on it by itself.
  virtual void BeforeCancel(bool& /*Cancel*/) {}
};

class BusyDialog {
 public:
  virtual ~BusyDialog() = default;

  // Path of the animation shown; a missing file shows no animation.
  virtual void AnimationFile(const std::string& FileName) = 0;
  virtual void Title(const std::string& Title) = 0;
  virtual void StatusText(const std::string& Text) = 0;
  virtual void CancelEnabled(bool Enabled) = 0;
  // Keeps the dialog in view over other output of the same host (a window above the others, a
  // terminal display redrawn below the lines printed in between).
  virtual void AlwaysOnTop(bool OnTop) = 0;

  // Bars are numbered from 1. Calls with an index that names no bar fail.
  virtual long ProgressBarCount() const = 0;
  virtual void AddProgressBar(const std::string& Caption, long Min, long Max, long Value) = 0;
  virtual void RemoveProgressBar(long Index) = 0;
  virtual void SetProgressCaption(long Index, const std::string& Caption) = 0;
  virtual void SetProgressValue(long Index, long Value) = 0;

  virtual void Show() = 0;
  virtual void Hide() = 0;

  void Subscribe(std::weak_ptr<BusyDialogEvents> subscriber) { mSubscribers.Add(std::move(subscriber)); }
  void Unsubscribe(const BusyDialogEvents* subscriber) { mSubscribers.Remove(subscriber); }

 protected:
  // Implementations call this when the user asks to cancel.
  void RaiseBeforeCancel(bool& Cancel) {
    mSubscribers.Raise([&](BusyDialogEvents& e) { e.BeforeCancel(Cancel); });
  }

 private:
  Subscribers<BusyDialogEvents> mSubscribers;
};

}  // namespace kv
