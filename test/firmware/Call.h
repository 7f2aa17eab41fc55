// What every call that enters the fake goes through: counts, records, checks the task priority
// level, lets due notifications and scheduled actions run, and applies the fault plan.

#pragma once

#include "test/firmware/Service.h"

namespace fake {

/// Printed forms of salient arguments.
std::string ArgText(const EFI_GUID *guid);
std::string ArgText(const std::string &text);
std::string ArgText(const char *text);
std::string ArgText(const CHAR16 *text);
std::string ArgText(uint64_t number);
std::string ArgText(int64_t number);

template <typename T>
requires std::is_integral_v<T> || std::is_enum_v<T> std::string ArgText(T number) {
  if constexpr (std::is_signed_v<T>) {
    return ArgText(static_cast<int64_t>(number));
  } else {
    return ArgText(static_cast<uint64_t>(number));
  }
}

class Call {
 public:
  /// `instance` is the fake object the call is made on, or null.
  template <typename... Args>
  Call(Service service, const void *instance, const Args &...args) : service_(service) {
    std::string text;
    if (Recorded(service)) {
      [[maybe_unused]] bool first = true;
      ((text += (first ? "" : ", ") + ArgText(args), first = false), ...);
    }
    Begin(instance, std::move(text));
  }

  /// Runs the service unless the fault plan decides otherwise, and records the status.
  template <typename Body>
  EFI_STATUS Run(Body body) {
    EFI_STATUS status = planned_ ? *planned_ : body();
    End(status);
    return status;
  }

  /// For services that cannot fail.
  template <typename Body>
  void RunVoid(Body body) {
    body();
    End(EFI_SUCCESS);
  }

  std::optional<EFI_STATUS> Planned() const { return planned_; }
  void End(EFI_STATUS status);

 private:
  static bool Recorded(Service service);
  void Begin(const void *instance, std::string args);

  Service service_;
  size_t record_ = ~size_t{0};
  std::optional<EFI_STATUS> planned_;
};

}  // namespace fake
