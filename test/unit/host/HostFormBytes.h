/** @file
  Package lists with forms, as drivers give them to the HII database.
**/

#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "host/portable/FormSearch.h"

extern "C" {
#include <Uefi/UefiInternalFormRepresentation.h>
}

namespace obv_host {

using Bytes = std::vector<uint8_t>;

inline constexpr EFI_GUID kSomeFormSet = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
inline constexpr EFI_GUID kOtherFormSet = {9, 8, 7, {6, 5, 4, 3, 2, 1, 0, 1}};

inline void AppendWord(Bytes *bytes, UINT16 value) {
  bytes->push_back(static_cast<uint8_t>(value));
  bytes->push_back(static_cast<uint8_t>(value >> 8));
}

inline void Append(Bytes *bytes, const Bytes &more) {
  bytes->insert(bytes->end(), more.begin(), more.end());
}

/// An opcode with its body; scope opens one.
inline Bytes Opcode(UINT8 code, const Bytes &body, bool scope) {
  Bytes bytes = {code, static_cast<uint8_t>((body.size() + 2) | (scope ? 0x80 : 0))};
  Append(&bytes, body);
  return bytes;
}

inline Bytes End() { return Opcode(EFI_IFR_END_OP, {}, false); }

inline Bytes FormSet(const EFI_GUID &guid, const Bytes &inside) {
  const auto *first = reinterpret_cast<const uint8_t *>(&guid);
  Bytes body(first, first + sizeof(guid));
  body.resize(body.size() + 5);
  Bytes bytes = Opcode(EFI_IFR_FORM_SET_OP, body, true);
  Append(&bytes, inside);
  Append(&bytes, End());
  return bytes;
}

inline Bytes Form(UINT16 id, const Bytes &inside, UINT8 code = EFI_IFR_FORM_OP) {
  Bytes body;
  AppendWord(&body, id);
  AppendWord(&body, 2);
  Bytes bytes = Opcode(code, body, true);
  Append(&bytes, inside);
  Append(&bytes, End());
  return bytes;
}

/// A question without what is particular to its kind.
inline Bytes Question(UINT8 code, UINT16 number, bool scope = false) {
  Bytes body(4);
  AppendWord(&body, number);
  body.resize(body.size() + 5);
  return Opcode(code, body, scope);
}

inline Bytes Package(UINT8 type, const Bytes &content) {
  size_t size = content.size() + 4;
  Bytes bytes = {static_cast<uint8_t>(size), static_cast<uint8_t>(size >> 8),
                 static_cast<uint8_t>(size >> 16), type};
  Append(&bytes, content);
  return bytes;
}

inline Bytes PackageList(const Bytes &packages) {
  Bytes bytes(sizeof(EFI_GUID), 0xAA);
  size_t size = bytes.size() + 4 + packages.size() + 4;
  AppendWord(&bytes, static_cast<UINT16>(size));
  AppendWord(&bytes, static_cast<UINT16>(size >> 16));
  Append(&bytes, packages);
  Append(&bytes, Package(EFI_HII_PACKAGE_END, {}));
  return bytes;
}

inline Bytes FormList(const Bytes &forms) {
  return PackageList(Package(EFI_HII_PACKAGE_FORMS, forms));
}

/// Looks in a copy without a byte to spare, which the sanitizers watch over.
inline bool Find(const Bytes &list, UINT16 question, OBV_SETUP_OPTION *option,
                 const EFI_GUID *formset = nullptr) {
  auto *exact = new uint8_t[list.size()];
  std::copy(list.begin(), list.end(), exact);
  bool found = FindQuestion(exact, list.size(), question, formset, option);
  delete[] exact;
  return found;
}

}  // namespace obv_host
