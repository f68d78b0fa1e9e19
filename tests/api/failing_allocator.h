#pragma once

// Replaces the C heap and operator new of the program that it is linked into, with
// -Wl,--wrap=malloc -Wl,--wrap=calloc -Wl,--wrap=realloc -Wl,--wrap=free.

/// Allocations that have not been freed.
long liveAllocations();

/// Allocations so far, reallocations and failures included.
long allocationCount();

/// Makes the allocation fail that comes after `index` others, and those after it if so asked.
void failAllocation(long index, bool allLater);

/// Ends the failures. Whether there was one.
bool stopFailingAllocations();
