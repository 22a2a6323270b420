#include "engine/embedded/DivisionByText.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "base/Text.h"
#include "engine/scene/GivenText.h"

namespace dravik::engine {

void divideByText(EmbeddedTool& tool, const std::string& text) {
    const std::vector<std::string> all = characters(text);
    const std::shared_ptr<const Scene> found = tool.foundScene();
    std::optional<Scene> divided;
    if (!all.empty() && found->characters() != all.size()) divided = sceneWithText(*found, all);
    tool.setDivision(divided ? std::make_shared<const Scene>(*std::move(divided)) : nullptr);
}

}  // namespace dravik::engine
