#pragma once
#include "no/such/header.h"

/// Uses a type nobody declared.
UnknownType brokenFunction(int x;

/// Still here after the errors.
int afterErrors();

class Unfinished {
