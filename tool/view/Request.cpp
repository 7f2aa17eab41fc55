#include "tool/view/Request.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <iterator>

#include "host/portable/Texts.h"
#include "view/Categories.h"

namespace board_view {

namespace {

using nlohmann::json;

/// The sizes that the view keeps; it switches from any other.
constexpr Pixel kSmall = {1024, 768};
constexpr Pixel kLeast = {1920, 1080};
constexpr Pixel kMost = {3840, 2160};

struct Appearance {
  const char *Name;
  obv_host::LookChoice Look;
};
constexpr Appearance kAppearances[] = {
    {"standard", {}},
    {"high-contrast", {.HighContrast = true, .LargeText = false}},
    {"large-text", {.HighContrast = false, .LargeText = true}},
};

struct Status {
  const char *Name;
  EFI_STATUS Answer;
};
/// Named as in a board's description.
constexpr Status kStatuses[] = {
    {"available", EFI_SUCCESS},   {"device-error", EFI_DEVICE_ERROR},
    {"not-ready", EFI_NOT_READY}, {"no-mapping", EFI_NO_MAPPING},
    {"absent", EFI_NOT_FOUND},
};

const char *AppearanceName(const Appearance &row) { return row.Name; }
const char *StatusName(const Status &row) { return row.Name; }
const char *LanguageName(const obv_host::LanguageTexts &row) { return row.Code; }

std::string Quoted(const std::string &text) { return '"' + text + '"'; }

/// "a, b, c", of the rows of a table.
template <typename Table, typename NameOf>
std::string Names(const Table &table, NameOf name) {
  std::string names;
  for (const auto &row : table) {
    names += (names.empty() ? "" : ", ") + std::string(name(row));
  }
  return names;
}

/// The row of a table that has this name, or a ViewError with all names.
template <typename Table, typename NameOf>
const auto &Find(const Table &table, NameOf name, const std::string &wanted, const char *what) {
  auto found = std::find_if(std::begin(table), std::end(table),
                            [&](const auto &row) { return wanted == name(row); });
  if (found == std::end(table)) {
    throw ViewError(Quoted(wanted) + " is no " + what + "; there are: " + Names(table, name));
  }
  return *found;
}

/// Two numbers with a sign between them, and nothing else.
std::optional<Pixel> TwoNumbers(const std::string &text, const char *format) {
  Pixel pixel;
  int used = 0;
  bool plain = !text.empty() && std::isdigit(static_cast<unsigned char>(text[0])) != 0;
  if (!plain || std::sscanf(text.c_str(), format, &pixel.X, &pixel.Y, &used) != 2 ||
      static_cast<size_t>(used) != text.size()) {
    return std::nullopt;
  }
  return pixel;
}

/// "M.2" is "m2", as in a board's description.
std::string Plain(const std::string &caption) {
  std::string plain;
  for (char sign : caption) {
    if (std::isalnum(static_cast<unsigned char>(sign)) != 0) {
      plain += static_cast<char>(std::tolower(static_cast<unsigned char>(sign)));
    }
  }
  return plain;
}

void SetResolution(Request *request, const std::string &text) {
  std::optional<Pixel> size = TwoNumbers(text, "%4ux%4u%n");
  if (!size) {
    throw ViewError(Quoted(text) + " is no resolution; write it like 1920x1080");
  }
  bool small = size->X == kSmall.X && size->Y == kSmall.Y;
  bool large =
      size->X >= kLeast.X && size->Y >= kLeast.Y && size->X <= kMost.X && size->Y <= kMost.Y;
  if (!small && !large) {
    throw ViewError("the view has no " + text + "; take 1024x768, or 1920x1080 to 3840x2160");
  }
  request->Width = size->X;
  request->Height = size->Y;
}

void SetLanguage(Request *request, const std::string &text) {
  request->Language = Find(obv_host::kLanguages, LanguageName, text, "language of the view").Code;
}

void SetAppearance(Request *request, const std::string &text) {
  request->Look = Find(kAppearances, AppearanceName, text, "appearance").Look;
}

void SetStatus(Request *request, const std::string &name, const std::string &status) {
  request->Statuses[name] = Find(kStatuses, StatusName, status, "status").Answer;
}

void SetPointer(Request *request, const std::string &text) {
  request->Pointer = TwoNumbers(text, "%4u,%4u%n");
  if (!request->Pointer) {
    throw ViewError(Quoted(text) + " is no place for the pointer; write it like 960,540");
  }
}

void SetFonts(Request *request, const json &value) {
  value.get_to(request->Fonts);
  if (request->Fonts.size() > obv_host::kFaceCount) {
    throw ViewError("the host has no more than three fonts");
  }
}

void SetFilter(Request *request, const std::string &text) {
  auto name = [](const Category &row) { return Plain(row.Caption); };
  request->FilterPresses =
      static_cast<size_t>(&Find(kCategories, name, Plain(text), "filter") - kCategories);
}

struct Field {
  const char *Name;
  const char *Form;
  void (*Take)(Request *request, const json &value);
};

constexpr Field kFields[] = {
    {"board", "the path of a board.bin",
     [](Request *request, const json &value) { value.get_to(request->Board); }},
    {"resolution", "a text",
     [](Request *request, const json &value) { SetResolution(request, value.get<std::string>()); }},
    {"language", "a text",
     [](Request *request, const json &value) { SetLanguage(request, value.get<std::string>()); }},
    {"appearance", "a text",
     [](Request *request, const json &value) { SetAppearance(request, value.get<std::string>()); }},
    {"statuses", "an object of texts",
     [](Request *request, const json &value) {
       for (const auto &[name, status] : value.get<std::map<std::string, std::string>>()) {
         SetStatus(request, name, status);
       }
     }},
    {"fonts", "a list of at most three paths",
     [](Request *request, const json &value) { SetFonts(request, value); }},
    {"hover", "the name of a component",
     [](Request *request, const json &value) { value.get_to(request->Hover); }},
    {"pointer", "a text",
     [](Request *request, const json &value) { SetPointer(request, value.get<std::string>()); }},
    {"filter", "a text",
     [](Request *request, const json &value) { SetFilter(request, value.get<std::string>()); }},
    {"shot", "the path of a file",
     [](Request *request, const json &value) { value.get_to(request->Shot); }},
    {"measure", "true or false",
     [](Request *request, const json &value) { value.get_to(request->Measure); }},
};

void TakeField(Request *request, const std::string &name, const json &value) {
  const Field &field = Find(
      kFields, [](const Field &row) { return row.Name; }, name, "field");
  try {
    field.Take(request, value);
  } catch (const json::exception &) {
    throw ViewError(Quoted(name) + " has to be " + field.Form);
  }
}

}  // namespace

Request ReadRequest(const json &wanted) {
  if (!wanted.is_object()) {
    throw ViewError("a request is one JSON object in one line");
  }
  Request request;
  for (const auto &[name, value] : wanted.items()) {
    TakeField(&request, name, value);
  }
  if (request.Board.empty()) {
    throw ViewError("the request names no \"board\"");
  }
  return request;
}

std::vector<std::string> Choices(const std::string &field) {
  std::vector<std::string> choices;
  auto add = [&](const auto &table, auto name) {
    for (const auto &row : table) {
      choices.emplace_back(name(row));
    }
  };
  if (field == "resolution") {
    choices = {"1024x768", "1920x1080", "2560x1440", "3840x2160"};
  } else if (field == "language") {
    add(obv_host::kLanguages, LanguageName);
  } else if (field == "appearance") {
    add(kAppearances, AppearanceName);
  } else if (field == "status") {
    add(kStatuses, StatusName);
  }
  return choices;
}

}  // namespace board_view
