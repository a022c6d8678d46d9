// Counts the allocations of a test program. Linking the source replaces the program's operator new.
#pragma once

/// How many allocations there were so far.
int CountedAllocations();
