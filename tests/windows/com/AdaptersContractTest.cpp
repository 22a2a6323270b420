// The embedded tool, offered as a COM object and used through one again, keeps the contract of all font
// tools.
#include "contract/FontToolContract.h"
#include "engine/embedded/EmbeddedTool.h"
#include "windows/com/support/ComTest.h"

namespace dravik::test {
namespace {

template <auto Adapter>
class Bench {
  public:
    FontTool& tool() { return *adapted_; }
    void show(const std::string& text) { embedded_->setImage(drawn({text})); }

  private:
    TemporaryFolder folder_;
    std::shared_ptr<EmbeddedTool> embedded_ = std::make_shared<EmbeddedTool>(JobFolder(folder_.path()));
    ComPtr<IUnknown> object_ =
        ComPtr<IUnknown>::attach(static_cast<IFontTool*>(new FontToolObject(embedded_)));
    std::unique_ptr<FontTool> adapted_ = Adapter(object_.get());
};

using Benches = testing::Types<Bench<fontToolOf>, Bench<lateBoundFontToolOf>>;
struct BenchNames {
    template <typename T>
    static std::string GetName(int index) {
        return index == 0 ? "Typed" : "LateBound";
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Com, FontToolContract, Benches, BenchNames);

}  // namespace
}  // namespace dravik::test
