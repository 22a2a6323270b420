// Everything below the keys that COM reads, as text; what was there before must be there afterwards.
#pragma once

#include <set>
#include <string>

namespace dravik::test {

// One line for each key and each value of the keys below Software\Classes of the machine and the user; "" is
// all of it, which takes a second or more.
std::string registryDump(const std::set<std::wstring>& keys);

}  // namespace dravik::test
