#include <HbrUtils/CodableUserDefault.h>

#include <MxLogger/MxLogger.h>

namespace hbr {

void logUnreadablePersistedRules() {
    MxLogger::error("could not load persisted filter rules");
}

}  // namespace hbr
