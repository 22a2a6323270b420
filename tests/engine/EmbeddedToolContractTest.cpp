// The embedded tool keeps the contract of all font tools.
#include "contract/DrawnText.h"
#include "contract/FontToolContract.h"
#include "engine/embedded/EmbeddedTool.h"

namespace dravik {
namespace {

class EmbeddedBench {
  public:
    FontTool& tool() { return tool_; }
    void show(const std::string& text) { tool_.setImage(drawn({text})); }

  private:
    TemporaryFolder folder_;
    EmbeddedTool tool_{JobFolder(folder_.path())};
};

INSTANTIATE_TYPED_TEST_SUITE_P(EmbeddedTool, FontToolContract, EmbeddedBench);

}  // namespace
}  // namespace dravik
