#include "effects/frame/CommandLine.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>
#include <sstream>

namespace zelvane {
namespace {

/// "Light from" is written light-from.
std::string Word(std::string label) {
  std::ranges::transform(label, label.begin(), [](unsigned char letter) {
    return letter == ' ' ? '-' : static_cast<char>(std::tolower(letter));
  });
  return label;
}

std::string Number(double value) {
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text << value;
  return text.str();
}

std::string ColourText(double value) {
  std::ostringstream text;
  text << '#' << std::hex << static_cast<uint32_t>(0x1000000 + value);
  return text.str().erase(1, 1);
}

/// What may be written behind a setting.
std::string ValuesOf(const Setting& setting) {
  if (setting.kind == Setting::Kind::Colour) return "a colour such as #ff8000";
  if (setting.kind != Setting::Kind::Choice)
    return "a number from " + Number(setting.least) + " to " + Number(setting.most);
  std::string words;
  for (const std::string& choice : setting.choices) words += (words.empty() ? "" : ", ") + Word(choice);
  return "one of " + words;
}

std::optional<double> ReadColour(const std::string& text) {
  uint32_t colour = 0;
  const char* const end = text.data() + text.size();
  if (text.size() != 7 || text[0] != '#') return std::nullopt;
  if (std::from_chars(text.data() + 1, end, colour, 16).ptr != end) return std::nullopt;
  return colour;
}

std::optional<double> ReadChoice(const Setting& setting, const std::string& text) {
  const auto found = std::ranges::find(setting.choices, Word(text), Word);
  if (found == setting.choices.end()) return std::nullopt;
  return static_cast<double>(found - setting.choices.begin());
}

std::optional<double> ReadValue(const Setting& setting, const std::string& text) {
  if (setting.kind == Setting::Kind::Colour) return ReadColour(text);
  if (setting.kind == Setting::Kind::Choice) return ReadChoice(setting, text);
  double value = 0;
  const char* const end = text.data() + text.size();
  if (std::from_chars(text.data(), end, value).ptr != end) return std::nullopt;
  if (!(value >= setting.least && value <= setting.most)) return std::nullopt;
  return value;
}

class Reader {
 public:
  Reader(const Effect& effect, const std::vector<std::string>& arguments)
      : effect_(effect), arguments_(arguments) {
    order_.values = StartOf(effect);
  }

  Order Read() {
    while (next_ < arguments_.size() && order_.kind != Order::Kind::Mistaken) {
      const std::string& argument = arguments_[next_++];
      if (argument == "--help") return {Order::Kind::Help, "", {}, ""};
      if (argument == "--apply")
        order_.kind = Order::Kind::Apply;
      else if (argument.starts_with("--"))
        Take(argument.substr(2));
      else if (!order_.path.empty())
        Complain("more than one file is given");
      else
        order_.path = argument;
    }
    if (order_.path.empty() && order_.kind != Order::Kind::Mistaken) Complain("no file is given");
    return order_;
  }

 private:
  void Complain(const std::string& mistake) {
    order_.kind = Order::Kind::Mistaken;
    order_.mistake = mistake;
  }

  /// A setting with its value, which stands behind "=" or is the next argument.
  void Take(const std::string& option) {
    const size_t sign = option.find('=');
    const std::string name = option.substr(0, sign);
    const auto found =
        std::ranges::find(effect_.settings, name, [](const Setting& s) { return Word(s.label); });
    if (found == effect_.settings.end()) return Complain("there is no setting --" + name);
    const bool is_behind = sign != std::string::npos;
    if (!is_behind && next_ == arguments_.size()) return Complain("--" + name + " is " + ValuesOf(*found));
    const auto value = ReadValue(*found, is_behind ? option.substr(sign + 1) : arguments_[next_++]);
    if (!value) return Complain("--" + name + " is " + ValuesOf(*found));
    order_.values[static_cast<size_t>(found - effect_.settings.begin())] = *value;
    order_.kind = Order::Kind::Apply;
  }

  const Effect& effect_;
  const std::vector<std::string>& arguments_;
  size_t next_ = 0;
  Order order_;
};

}  // namespace

Values StartOf(const Effect& effect) {
  Values values;
  for (const Setting& setting : effect.settings) values.push_back(setting.start);
  return values;
}

Order ReadCommandLine(const Effect& effect, const std::vector<std::string>& arguments) {
  return Reader(effect, arguments).Read();
}

std::string UsageOf(const Effect& effect, const std::string& program) {
  std::string text = effect.title + ", an effect on a Windows bitmap, which it writes back.\n\n  " + program +
                     " FILE                shows a window\n  " + program +
                     " [SETTINGS] FILE     applies it at once\n\nSettings:\n";
  for (const Setting& setting : effect.settings) {
    const auto choice = static_cast<size_t>(setting.start);
    const std::string start = setting.kind == Setting::Kind::Colour   ? ColourText(setting.start)
                              : setting.kind == Setting::Kind::Choice ? Word(setting.choices[choice])
                                                                      : Number(setting.start);
    text += "  --" + Word(setting.label) + "  " + ValuesOf(setting) + "; otherwise " + start + "\n";
  }
  return text + "  --apply  all settings as they start\n";
}

}  // namespace zelvane
