#include "strategy/best_hold.h"

std::array<HoldResult, HoldCount> resultTable;

std::int32_t FindBestHold(const CardRecord*, const GameDescriptor&, std::int32_t) {
    return 0;
}
