#include "completion.h"

#include <algorithm>

namespace hvtool {
namespace {

using Words = std::vector<std::string>;

std::string Joined(const Words& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

// In single quotes, as all three shells take them.
std::string Quote(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? "'\\''" : std::string(1, c);
  return quoted + "'";
}

// Descriptions end at a colon or a full stop: what stands behind is for the manual.
std::string Brief(const std::string& description) {
  return description.substr(0, description.find_first_of(":."));
}

Words OptionNames(const CommandRow& command) {
  Words names;
  for (const OptionRow& option : command.options) {
    if (!option.isArgument) names.insert(names.end(), option.names.begin(), option.names.end());
  }
  return names;
}

// What the first argument of a command may be, where it is one of a list of words.
Words FirstArgumentChoices(const CommandRow& command) {
  const auto first = std::find_if(command.options.begin(), command.options.end(),
                                  [](const OptionRow& option) { return option.isArgument; });
  return first == command.options.end() ? Words() : first->choices;
}

// "hvapi queue"|"hvapi queue add"|...: the names of all commands, as a pattern of a case.
std::string CommandPattern(const std::vector<CommandRow>& commands) {
  std::string pattern;
  for (const CommandRow& command : commands) {
    pattern += (pattern.empty() ? "\"" : "|\"") + command.name + "\"";
  }
  return pattern;
}

// One line of a case for each option that takes one of a list of words.
template <typename Line>
std::string ChoiceLines(const std::vector<CommandRow>& commands, Line line) {
  std::string text;
  for (const CommandRow& command : commands) {
    for (const OptionRow& option : command.options) {
      if (option.isArgument || option.choices.empty()) continue;
      for (const std::string& name : option.names) {
        text += line(command.name + " " + name, Joined(option.choices));
      }
    }
  }
  return text;
}

// 'word:description', as zsh describes them.
std::string Described(const std::string& word, const std::string& description) {
  return Quote(word + ":" + Brief(description)) + " ";
}

}  // namespace

std::string BashCompletion(const std::vector<CommandRow>& commands) {
  std::string script =
      "# Completion of hvapi for bash.\n"
      "_hvapi() {\n"
      "  local current=${COMP_WORDS[COMP_CWORD]} path=hvapi words='' i\n"
      "  for ((i = 1; i < COMP_CWORD; ++i)); do\n"
      "    case \"$path ${COMP_WORDS[i]}\" in\n"
      "      " +
      CommandPattern(commands) +
      ") path=\"$path ${COMP_WORDS[i]}\" ;;\n"
      "    esac\n"
      "  done\n"
      "  case \"$path ${COMP_WORDS[COMP_CWORD - 1]}\" in\n";
  script += ChoiceLines(commands, [](const std::string& option, const std::string& choices) {
    return "    \"" + option + "\") words='" + choices + "' ;;\n";
  });
  script +=
      "  esac\n"
      "  if [ -z \"$words\" ]; then\n"
      "    case \"$path\" in\n";
  for (const CommandRow& command : commands) {
    script += "      \"" + command.name + "\") ";
    if (command.commands.empty()) {
      script += "[[ $current == -* ]] && words='" + Joined(OptionNames(command)) + "' || words='" +
                Joined(FirstArgumentChoices(command)) + "' ;;\n";
    } else {
      script += "words='" + Joined(command.commands) + "' ;;\n";
    }
  }
  return script +
         "    esac\n"
         "  fi\n"
         "  # Without words of its own an argument is the name of a file.\n"
         "  if [ -n \"$words\" ]; then\n"
         "    mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\")\n"
         "  else\n"
         "    compopt -o filenames 2>/dev/null\n"
         "    mapfile -t COMPREPLY < <(compgen -f -- \"$current\")\n"
         "  fi\n"
         "}\n"
         "complete -F _hvapi hvapi\n";
}

std::string ZshCompletion(const std::vector<CommandRow>& commands) {
  std::string script =
      "#compdef hvapi\n"
      "# Completion of hvapi for zsh.\n"
      "_hvapi() {\n"
      "  local line=hvapi word\n"
      "  local -a found\n"
      "  for word in ${words[2,CURRENT-1]}; do\n"
      "    case \"$line $word\" in\n"
      "      (" +
      CommandPattern(commands) +
      ") line=\"$line $word\" ;;\n"
      "    esac\n"
      "  done\n"
      "  case \"$line ${words[CURRENT-1]}\" in\n";
  script += ChoiceLines(commands, [](const std::string& option, const std::string& choices) {
    return "    (\"" + option + "\") compadd -- " + choices + "; return ;;\n";
  });
  script +=
      "  esac\n"
      "  case \"$line\" in\n";
  for (const CommandRow& command : commands) {
    script += "    (\"" + command.name + "\")\n      ";
    if (command.commands.empty()) {
      const std::string choices = Joined(FirstArgumentChoices(command));
      script += "[[ $PREFIX == -* ]] || { ";
      script += choices.empty() ? "_files" : "compadd -- " + choices;
      script += "; return }\n      found=(";
      for (const OptionRow& option : command.options) {
        if (option.isArgument) continue;
        for (const std::string& name : option.names) script += Described(name, option.description);
      }
      script += ")\n      _describe option found ;;\n";
      continue;
    }
    script += "found=(";
    for (const std::string& word : command.commands) {
      const auto row = std::find_if(commands.begin(), commands.end(), [&](const CommandRow& c) {
        return c.name == command.name + " " + word;
      });
      script += Described(word, row->brief);
    }
    script += ")\n      _describe command found ;;\n";
  }
  return script + "  esac\n}\n_hvapi \"$@\"\n";
}

std::string FishCompletion(const std::vector<CommandRow>& commands) {
  std::string script =
      "# Completion of hvapi for fish.\n"
      "function __hvapi_at\n"
      "  set -l line hvapi\n"
      "  for word in (commandline -opc)[2..-1]\n"
      "    contains -- \"$line $word\"";
  for (const CommandRow& command : commands) script += " " + Quote(command.name);
  script +=
      "; and set line \"$line $word\"\n"
      "  end\n"
      "  test \"$line\" = \"$argv\"\n"
      "end\n";
  for (const CommandRow& command : commands) {
    const std::string place = "complete -c hvapi -n " + Quote("__hvapi_at " + command.name);
    const std::size_t blank = command.name.find_last_of(' ');
    if (blank != std::string::npos) {
      script += "complete -c hvapi -n " + Quote("__hvapi_at " + command.name.substr(0, blank)) +
                " -f -a " + command.name.substr(blank + 1) + " -d " + Quote(command.brief) + "\n";
    }
    const std::string choices = Joined(FirstArgumentChoices(command));
    if (!choices.empty()) script += place + " -f -a " + Quote(choices) + "\n";
    for (const OptionRow& option : command.options) {
      if (option.isArgument) continue;
      std::string line = place;
      for (const std::string& name : option.names) {
        line += name.rfind("--", 0) == 0 ? " -l " + name.substr(2) : " -s " + name.substr(1);
      }
      if (!option.choices.empty()) {
        line += " -x -a " + Quote(Joined(option.choices));
      } else if (!option.value.empty()) {
        line += " -r";
      }
      script += line + " -d " + Quote(Brief(option.description)) + "\n";
    }
  }
  return script;
}

}  // namespace hvtool
