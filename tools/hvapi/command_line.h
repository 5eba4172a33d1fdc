// The command-line parser's types by name alone: its own header is large.
#pragma once

namespace CLI {  // NOLINT(readability-identifier-naming): the parser's spelling
class App;
class Option;
}  // namespace CLI
