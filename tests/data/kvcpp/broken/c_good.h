#pragma once
/// Declared after the broken header.
int afterBroken();

namespace late {
/// A class after the broken header.
class Survivor {};
}
