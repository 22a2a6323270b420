// The library's own handler writes the name of an exception that nobody caught to a console that a control
// does not have, and brings tens of kilobytes for it. Takes its place.
#include <cstdlib>

// NOLINTBEGIN(bugprone-reserved-identifier)
namespace __gnu_cxx {

void __verbose_terminate_handler();
void __verbose_terminate_handler() {
    std::abort();
}

}  // namespace __gnu_cxx
// NOLINTEND(bugprone-reserved-identifier)
