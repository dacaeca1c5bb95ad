#pragma once
/// Declared before the broken header.
int beforeBroken();
