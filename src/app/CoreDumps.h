#pragma once

// Disables core files and keeps other programs of the same user from reading this process's memory, because it holds
// keys. Programs that it starts keep only the limit on core files.
void disableCoreDumps();
