#include "test/firmware/VariableStore.h"

#include "test/firmware/Guids.h"
#include "test/firmware/Text.h"

namespace fake {

namespace {

constexpr UINT32 kKnownAttributes = EFI_VARIABLE_NON_VOLATILE | EFI_VARIABLE_BOOTSERVICE_ACCESS |
                                    EFI_VARIABLE_RUNTIME_ACCESS | EFI_VARIABLE_APPEND_WRITE;
constexpr UINTN kLargestVariable = 32 * 1024;

}  // namespace

std::vector<VariableStore::Variable>::const_iterator VariableStore::Find(
    std::u16string_view name, const EFI_GUID &vendor) const {
  return std::find_if(variables_.begin(), variables_.end(), [&](const Variable &variable) {
    return variable.Name == name && SameGuid(variable.Vendor, vendor);
  });
}

EFI_STATUS VariableStore::Get(const CHAR16 *name, const EFI_GUID *vendor, UINT32 *attributes,
                              UINTN *size, VOID *data) const {
  if (name == nullptr || vendor == nullptr || size == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  auto found = name[0] == 0 ? variables_.end() : Find(ToU16(name), *vendor);
  if (found == variables_.end()) {
    return EFI_NOT_FOUND;
  }
  if (attributes != nullptr) {
    *attributes = found->Attributes;
  }
  UINTN capacity = std::exchange(*size, found->Data.size());
  if (capacity < *size) {
    return EFI_BUFFER_TOO_SMALL;
  }
  if (data == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  std::memcpy(data, found->Data.data(), *size);
  return EFI_SUCCESS;
}

EFI_STATUS VariableStore::Set(const CHAR16 *name, const EFI_GUID *vendor, UINT32 attributes,
                              UINTN size, const VOID *data) {
  bool append = (attributes & EFI_VARIABLE_APPEND_WRITE) != 0;
  bool runtimeOnly =
      (attributes & (EFI_VARIABLE_RUNTIME_ACCESS | EFI_VARIABLE_BOOTSERVICE_ACCESS)) ==
      EFI_VARIABLE_RUNTIME_ACCESS;
  if (name == nullptr || name[0] == 0 || vendor == nullptr || runtimeOnly ||
      (attributes & ~kKnownAttributes) != 0 || (size != 0 && data == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }
  std::u16string key = ToU16(name);
  auto found = variables_.begin() + (Find(key, *vendor) - variables_.cbegin());
  bool remove = (size == 0 && !append) || (attributes & ~EFI_VARIABLE_APPEND_WRITE) == 0;
  if (remove) {
    if (found == variables_.end()) {
      return EFI_NOT_FOUND;
    }
    variables_.erase(found);
    return EFI_SUCCESS;
  }
  if (size > kLargestVariable) {
    return EFI_OUT_OF_RESOURCES;
  }
  UINT32 kept = attributes & ~static_cast<UINT32>(EFI_VARIABLE_APPEND_WRITE);
  if (found != variables_.end() && found->Attributes != kept) {
    return EFI_INVALID_PARAMETER;
  }
  const auto *bytes = static_cast<const uint8_t *>(data);
  if (found == variables_.end()) {
    variables_.push_back({key, *vendor, kept, {bytes, bytes + size}});
  } else {
    if (!append) {
      found->Data.clear();
    }
    found->Data.insert(found->Data.end(), bytes, bytes + size);
  }
  return EFI_SUCCESS;
}

EFI_STATUS VariableStore::Next(UINTN *size, CHAR16 *name, EFI_GUID *vendor) const {
  if (size == nullptr || name == nullptr || vendor == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  auto next = variables_.begin();
  if (name[0] != 0) {
    next = Find(ToU16(name), *vendor);
    if (next == variables_.end()) {
      return EFI_INVALID_PARAMETER;
    }
    ++next;
  }
  if (next == variables_.end()) {
    return EFI_NOT_FOUND;
  }
  UINTN needed = (next->Name.size() + 1) * sizeof(CHAR16);
  if (std::exchange(*size, needed) < needed) {
    return EFI_BUFFER_TOO_SMALL;
  }
  std::memcpy(name, next->Name.c_str(), needed);
  *vendor = next->Vendor;
  return EFI_SUCCESS;
}

void VariableStore::SetText(std::u16string_view name, std::string_view text) {
  Remove(name);
  std::vector<uint8_t> data(text.begin(), text.end());
  data.push_back(0);
  variables_.push_back(
      {std::u16string(name), kGlobalVariableGuid,
       EFI_VARIABLE_NON_VOLATILE | EFI_VARIABLE_BOOTSERVICE_ACCESS | EFI_VARIABLE_RUNTIME_ACCESS,
       std::move(data)});
}

void VariableStore::Remove(std::u16string_view name) {
  std::erase_if(variables_, [&](const Variable &variable) {
    return variable.Name == name && SameGuid(variable.Vendor, kGlobalVariableGuid);
  });
}

}  // namespace fake
