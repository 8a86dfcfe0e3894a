#pragma once

namespace tavlo {

// Where users are sent when the pool is damaged beyond what Tavlo repairs.
inline constexpr const char* kSupportAddress = "support@tavlo.app";

}  // namespace tavlo
