#include "host/SoundPlayer.h"

namespace kv {
namespace {

std::shared_ptr<SoundPlayer>& current() {
  static std::shared_ptr<SoundPlayer> player;
  return player;
}

}  // namespace

void setSoundPlayer(std::shared_ptr<SoundPlayer> player) {
  current() = std::move(player);
}
std::shared_ptr<SoundPlayer> soundPlayer() {
  return current();
}
void playSound(const std::string& FileName, int Flags) {
  if (auto player = current()) player->Play(FileName, Flags);
}

}  // namespace kv
