#pragma once

// What holds for all of dalvo, and is said once: an operation that is not noexcept throws std::bad_alloc when memory runs
// out, and has then changed nothing, unless its comment says otherwise. docs/errors.md tells what a throw leaves.

/// Marks what crosses the border of a shared library: what libdalvo offers, and the two symbols that its host brings.
/// Hosts define nothing: the headers read the same beside a shared library and beside a static one.
///
/// Inside the static library all is hidden, so that a host that takes it into a shared object of its own shows nothing
/// of it and finds its own two symbols, even beside another such object in the same process.
#if defined(DALVO_STATIC_LIBRARY) // defined where the static library itself is compiled
#define DALVO_API __attribute__((visibility("hidden")))
#else
#define DALVO_API __attribute__((visibility("default")))
#endif
