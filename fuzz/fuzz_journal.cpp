#include "FuzzTargets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    dravik::tryJournal({bytes, size});
    return 0;
}
