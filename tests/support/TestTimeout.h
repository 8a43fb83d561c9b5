#pragma once

namespace kvmstest {

// A timeout for a wait in a test: ms as given on a developer's machine, three
// times that when the CI environment variable is set (slower, shared machines).
int scaled(int ms);

} // namespace kvmstest
