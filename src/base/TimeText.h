// Points in time as this system writes them for people: local, and in the form that sorts.
#pragma once

#include <chrono>
#include <string>

namespace dravik {

// "2026-03-31 14:05:09"; "" for a time that the calendar does not have.
std::string localTimeText(std::chrono::system_clock::time_point time = std::chrono::system_clock::now());

}  // namespace dravik
