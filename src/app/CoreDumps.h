#pragma once

// Disables core files of this process, and other programs of the same user from reading its memory, because it holds
// keys. Programs that it starts keep only the limit on core files.
void disableCoreDumps();
