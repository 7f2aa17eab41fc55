// UEFI variables with the statuses of GetVariable, SetVariable and GetNextVariableName.

#pragma once

#include "test/firmware/Edk2.h"

namespace fake {

class VariableStore {
 public:
  EFI_STATUS Get(const CHAR16 *name, const EFI_GUID *vendor, UINT32 *attributes, UINTN *size,
                 VOID *data) const;
  EFI_STATUS Set(const CHAR16 *name, const EFI_GUID *vendor, UINT32 attributes, UINTN size,
                 const VOID *data);
  EFI_STATUS Next(UINTN *size, CHAR16 *name, EFI_GUID *vendor) const;

  /// Sets a global variable to an ASCII text with its terminator, as PlatformLang is kept.
  void SetText(std::u16string_view name, std::string_view text);
  /// Removes a global variable; nothing happens when it is absent.
  void Remove(std::u16string_view name);
  size_t Count() const { return variables_.size(); }

 private:
  struct Variable {
    std::u16string Name;
    EFI_GUID Vendor;
    UINT32 Attributes;
    std::vector<uint8_t> Data;
  };
  std::vector<Variable>::const_iterator Find(std::u16string_view name,
                                             const EFI_GUID &vendor) const;
  std::vector<Variable> variables_;
};

}  // namespace fake
