// Parsing and releasing small replies, beside what the memory of their records alone costs; and the
// worst that a reply of full size can do.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>

#include "hvapi.h"

namespace {

std::string Reply(const std::string& rest) {
  std::string reply = {static_cast<char>(rest.size() >> 8), static_cast<char>(rest.size())};
  return reply + rest;
}

// Bytes of one-byte identifiers and data types, two-byte counts and lengths.
std::string Container(char identifier, int count, const std::string& children) {
  return std::string{identifier, 0, 0, static_cast<char>(count)} +
         static_cast<char>(children.size() >> 8) + static_cast<char>(children.size()) + children;
}
std::string Item(char identifier, char type, const std::string& data) {
  return std::string{identifier, type, static_cast<char>(data.size())} + data;
}
std::string WithLayout(const std::string& body) {
  return Reply("\x01\x02P{ID:1,DT:1}C{NE:2,LD:2}D{LD:1,DA:0}" + body);
}

std::string SmallOptions() {
  const std::string entry =
      Container(1, 3, Item(1, 1, "\x07") + Item(5, 1, "\x01\x02") + Item(6, 2, "Letter"));
  const std::string value = Container(1, 1, Item(1, 1, "\x05"));
  const std::string group = Container(
      1, 3, Item(1, 2, "tray") + Item(2, 2, "Paper source") + Container(3, 2, value + value));
  return WithLayout(Container(1, 2, Container(1, 2, entry + entry) + Container(3, 1, group)));
}

std::string SmallAlert() {
  const std::string job = Container(1, 2, Item(1, 1, "\x01\x02") + Item(7, 2, "1.0")) +
                          Container(2, 1, Item(1, 2, "report.ps"));
  return WithLayout(
      Container(1, 2, Container(2, 2, job) + Container(3, 1, Container(2, 1, Item(1, 1, "\x09")))));
}

// Thousands of fields without bytes, over thousands of items of one byte.
std::string Hostile() {
  std::string layout = "\x01\x02P{ID:1";
  while (layout.size() < 32000) layout += ",DT:0";
  return Reply(layout + "}C{}D{}" + std::string(32000, '\x02'));
}

void ParseOptions(benchmark::State& state) {
  const std::string reply = SmallOptions();
  for (auto _ : state) HvFreeOptionInfo(HvParseOptionInfo(reply.data()));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(ParseOptions);

void AllocateOptionsOnly(benchmark::State& state) {
  constexpr std::size_t Sizes[] = {24, 40, 28, 7, 7, 5, 13, 8};
  void* blocks[std::size(Sizes)];
  for (auto _ : state) {
    for (std::size_t i = 0; i < std::size(Sizes); ++i) blocks[i] = std::calloc(Sizes[i], 1);
    benchmark::DoNotOptimize(blocks);
    for (void* block : blocks) std::free(block);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(AllocateOptionsOnly);

void ParseAlert(benchmark::State& state) {
  const std::string reply = SmallAlert();
  for (auto _ : state) HvFreeJobAccount(HvParseJobAccountingAlert(reply.data()));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(ParseAlert);

void ParseHostile(benchmark::State& state) {
  const std::string reply = Hostile();
  for (auto _ : state) HvFreeJobAccount(HvParseJobAccountingAlert(reply.data()));
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(reply.size()));
}
BENCHMARK(ParseHostile);

}  // namespace

BENCHMARK_MAIN();
