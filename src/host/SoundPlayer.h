// Sounds at the end of a build go to a host hook; without one nothing is played.
#pragma once

#include <memory>
#include <string>

namespace kv {

namespace snd {
// Flags of a request, combined by addition.
inline constexpr int Async = 1;      // return at once
inline constexpr int NoDefault = 2;  // a missing file plays nothing instead of a default sound
}  // namespace snd

class SoundPlayer {
 public:
  virtual ~SoundPlayer() = default;
  virtual void Play(const std::string& FileName, int Flags) = 0;
};

// The process-wide player; nullptr (the default) keeps the process silent.
void setSoundPlayer(std::shared_ptr<SoundPlayer> player);
std::shared_ptr<SoundPlayer> soundPlayer();
void playSound(const std::string& FileName, int Flags);

}  // namespace kv
