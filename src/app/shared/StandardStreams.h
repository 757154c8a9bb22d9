#pragma once

#include <string_view>

// The program keeps running when nobody can read its standard error; the lines are lost.

// Opens /dev/null in place of closed standard streams, so that no file or socket takes their descriptors, ignores
// SIGPIPE, and sends Qt's messages through writeToStandardError(). Call it first in main().
void prepareStandardStreams();

// Never waits: drops the rest of the text if its reader is slow, has stopped or no longer exists.
void writeToStandardError(std::string_view text);
