#include "support/encoder_parts.h"

#include <algorithm>
#include <map>
#include <queue>

namespace hvtest {

std::vector<Token> FindTokens(std::string_view content, const MatchLimits& limits) {
  std::vector<Token> tokens;
  std::map<std::string_view, std::vector<std::size_t>> places;
  for (std::size_t at = 0; at < content.size();) {
    Token best;
    best.literal = ByteAt(content, at);
    const std::string_view key = content.substr(at, limits.minLength);
    const auto consider = [&](std::size_t from) {
      std::size_t length = 0;
      while (at + length < content.size() && length < limits.maxLength &&
             content[from + length] == content[at + length]) {
        ++length;
      }
      if (length >= limits.minLength && length > best.length) {
        best.length = length;
        best.distance = at - from;
      }
    };
    if (at >= limits.maxDistance) consider(at - limits.maxDistance);
    const std::vector<std::size_t>& known = places[key];
    for (std::size_t i = 0; i < std::min<std::size_t>(known.size(), 4); ++i) {
      const std::size_t from = known[known.size() - 1 - i];
      if (at - from <= limits.maxDistance) consider(from);
    }
    tokens.push_back(best);
    for (std::size_t i = 0; i < std::max<std::size_t>(best.length, 1); ++i, ++at) {
      places[content.substr(at, limits.minLength)].push_back(at);
    }
  }
  return tokens;
}

std::vector<unsigned> CodeLengths(std::vector<std::size_t> frequencies, unsigned limit) {
  for (std::size_t i = 0; std::count(frequencies.begin(), frequencies.end(), 0U) >
                          static_cast<std::ptrdiff_t>(frequencies.size()) - 2;
       ++i) {
    frequencies[i] = std::max<std::size_t>(frequencies[i], 1);
  }
  for (;;) {
    using Node = std::pair<std::size_t, std::vector<std::size_t>>;  // weight, symbols
    std::priority_queue<Node, std::vector<Node>, std::greater<>> nodes;
    for (std::size_t i = 0; i < frequencies.size(); ++i) {
      if (frequencies[i] > 0) nodes.push({frequencies[i], {i}});
    }
    std::vector<unsigned> lengths(frequencies.size());
    while (nodes.size() > 1) {
      Node sum = nodes.top();
      nodes.pop();
      sum.first += nodes.top().first;
      sum.second.insert(sum.second.end(), nodes.top().second.begin(), nodes.top().second.end());
      nodes.pop();
      for (const std::size_t symbol : sum.second) ++lengths[symbol];
      nodes.push(sum);
    }
    if (*std::max_element(lengths.begin(), lengths.end()) <= limit) return lengths;
    for (std::size_t& f : frequencies) f = (f + 1) / 2;
  }
}

}  // namespace hvtest
