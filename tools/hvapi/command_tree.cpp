#include "command_tree.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <numeric>

#include "program.h"

namespace hvtool {
namespace {

OptionRow RowOf(const CLI::Option& option) {
  OptionRow row;
  row.isArgument = option.get_positional();
  if (row.isArgument) {
    row.names = {option.get_name(true)};
  } else {
    for (const std::string& name : option.get_snames()) row.names.push_back("-" + name);
    for (const std::string& name : option.get_lnames()) row.names.push_back("--" + name);
  }
  row.value = option.get_type_name();
  row.description = option.get_description();
  row.choices = ChoicesOf(&option);
  row.isRequired = option.get_required();
  row.takesSeveral = option.get_expected_max() > 1;
  return row;
}

void AddRows(const CLI::App& command, const std::string& name, std::vector<CommandRow>* rows) {
  CommandRow row;
  row.name = name;
  row.brief = command.get_description();
  row.manual = command.get_footer();
  row.group = command.get_group();
  for (const CLI::Option* option : command.get_options()) row.options.push_back(RowOf(*option));
  const std::vector<const CLI::App*> below = command.get_subcommands({});
  for (const CLI::App* child : below) row.commands.push_back(child->get_name());
  rows->push_back(std::move(row));
  for (const CLI::App* child : below) AddRows(*child, name + " " + child->get_name(), rows);
}

// How many letters have to be put in, left out or replaced to make one word of the other.
std::size_t Distance(const std::string& a, const std::string& b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({row[j] + 1, diagonal + 1, replaced});
    }
  }
  return row.back();
}

}  // namespace

std::vector<CommandRow> ListCommands(const CLI::App& program) {
  std::vector<CommandRow> rows;
  AddRows(program, program.get_name(), &rows);
  return rows;
}

std::string NearestWord(const std::string& word, const std::vector<std::string>& words) {
  constexpr std::size_t Farthest = 2;
  std::string nearest;
  std::size_t least = std::min(Farthest, word.size() / 2) + 1;
  for (const std::string& candidate : words) {
    const std::size_t distance = Distance(word, candidate);
    if (distance >= least) continue;
    least = distance;
    nearest = candidate;
  }
  return nearest;
}

}  // namespace hvtool
