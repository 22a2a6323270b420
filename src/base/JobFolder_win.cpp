#include "base/JobFolder.h"

namespace dravik {

JobFolder::JobFolder() : folder_("C:\\Tamlux\\Jobs\\") {}

}  // namespace dravik
