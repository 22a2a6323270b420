// A function of a library that every Windows has, but that Windows looks for beside the program first: it is
// loaded when it is first called, from the system's folder alone, so that nobody's library of that name takes
// its place.
#pragma once

namespace dravik::win32 {

// Of a library's name without a folder; null when there is none.
void* systemFunction(const wchar_t* library, const char* name) noexcept;

template <typename Pointer>
class SystemFunction;

template <typename Result, typename... Arguments>
class SystemFunction<Result(WINAPI*)(Arguments...)> {
  public:
    SystemFunction(const wchar_t* library, const char* name) noexcept
        : function_(reinterpret_cast<Result(WINAPI*)(Arguments...)>(systemFunction(library, name))) {}
    // What a function that is missing answers is 0.
    Result operator()(Arguments... arguments) const { return function_ ? function_(arguments...) : Result{}; }

  private:
    Result(WINAPI* function_)(Arguments...);
};

}  // namespace dravik::win32
