#pragma once

namespace tavlo {

class Database;

// The rows a new pool starts with: the "--Initialized--" preset and memory
// image, controller names, the system device, and the cleared-device dumps.
void SeedPool(Database& db);

}  // namespace tavlo
