// A script language in the test's own process: runs a text and gives the value of an expression.
#pragma once

#include <activscp.h>
#include "windows/com/ComPtr.h"
#include "windows/com/Variant.h"

#include <string>

namespace dravik::test {

using namespace com;

class ScriptEngine {
  public:
    // "VBScript" or "JScript".
    explicit ScriptEngine(const std::wstring& language);
    ~ScriptEngine();

    void run(const std::wstring& text);
    Variant value(const std::wstring& expression);
    // Text of the last error that a script did not handle itself.
    const std::string& error() const;

  private:
    class Site;

    ComPtr<IActiveScriptSite> site_;
    ComPtr<IActiveScript> engine_;
    ComPtr<IActiveScriptParse> parser_;
};

}  // namespace dravik::test
