// Marks what the kavrel library offers to plug-ins. The library is built with hidden symbols, so
// that only the public interface is visible to the programs and plug-ins that load it; every
// class and function of include/kavrel carries KV_API.
#pragma once

#define KV_API __attribute__((visibility("default")))
