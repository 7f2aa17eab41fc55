/** @file
  SMBIOS tables for the tests of the reference host, built structure by structure.
**/

#pragma once

#include <algorithm>
#include <cstring>
#include <numeric>
#include <string>
#include <vector>

#include "test/firmware/FakeFirmware.h"

extern "C" {
#include <Guid/SmBios.h>
#include <IndustryStandard/SmBios.h>
}

namespace obv_host {

/// The structures of a table, and the entry points that lead to it.
class SmbiosBuilder {
 public:
  /// Adds a structure of this type: the first length bytes of record, then the strings, of which
  /// the first has number 1. Returns where it begins.
  template <typename Record>
  size_t Add(UINT8 type, Record record, const std::vector<std::string> &strings = {},
             size_t length = sizeof(Record)) {
    record.Hdr.Type = type;
    record.Hdr.Length = static_cast<UINT8>(length);
    record.Hdr.Handle = static_cast<UINT16>(0x1000 + Bytes.size());
    const auto *start = reinterpret_cast<const UINT8 *>(&record);
    return AddRaw({start, start + length}, strings);
  }

  size_t AddRaw(const std::vector<UINT8> &formatted, const std::vector<std::string> &strings) {
    size_t at = Bytes.size();
    Bytes.insert(Bytes.end(), formatted.begin(), formatted.end());
    for (const std::string &text : strings) {
      Bytes.insert(Bytes.end(), text.begin(), text.end());
      Bytes.push_back(0);
    }
    Bytes.insert(Bytes.end(), strings.empty() ? 2 : 1, 0);
    return at;
  }

  /// The end-of-table structure.
  void End() { AddRaw({SMBIOS_TYPE_END_OF_TABLE, 4, 0xFF, 0xFE}, {}); }

  /// Makes the table the machine's by an entry point of SMBIOS 3, in blocks without a byte to
  /// spare.
  void Install(fake::Firmware &machine) {
    placed_ = Bytes;
    placed_.shrink_to_fit();
    Entry3 = {};
    std::memcpy(Entry3.AnchorString, "_SM3_", 5);
    Entry3.EntryPointLength = sizeof(Entry3);
    Entry3.MajorVersion = 3;
    Entry3.TableMaximumSize = static_cast<UINT32>(placed_.size());
    Entry3.TableAddress = reinterpret_cast<UINT64>(placed_.data());
    Publish3(machine);
  }

  /// The same by an entry point of SMBIOS 2. Its address has 32 bits, so that Bytes must have been
  /// placed somewhere by the caller; see LowMemory.h.
  void Install2(fake::Firmware &machine, const UINT8 *placed) {
    Entry2 = {};
    std::memcpy(Entry2.AnchorString, "_SM_", 4);
    Entry2.EntryPointLength = sizeof(Entry2);
    Entry2.MajorVersion = 2;
    std::memcpy(Entry2.IntermediateAnchorString, "_DMI_", 5);
    Entry2.TableLength = static_cast<UINT16>(Bytes.size());
    Entry2.TableAddress = static_cast<UINT32>(reinterpret_cast<UINTN>(placed));
    Publish2(machine);
  }

  /// Publishes the entry points as they stand, with the right checksums.
  void Publish3(fake::Firmware &machine) {
    Entry3.EntryPointStructureChecksum = 0;
    Entry3.EntryPointStructureChecksum = Complement(&Entry3, sizeof(Entry3));
    PublishAsIs3(machine);
  }

  void Publish2(fake::Firmware &machine) {
    Entry2.IntermediateChecksum = 0;
    Entry2.IntermediateChecksum = Complement(&Entry2.IntermediateAnchorString, 15);
    Entry2.EntryPointStructureChecksum = 0;
    size_t length = std::min<size_t>(Entry2.EntryPointLength, sizeof(Entry2));
    Entry2.EntryPointStructureChecksum = Complement(&Entry2, length);
    PublishAsIs2(machine);
  }

  void PublishAsIs3(fake::Firmware &machine) {
    std::memcpy(published3_.data(), &Entry3, sizeof(Entry3));
    machine.SetConfigurationTable(gEfiSmbios3TableGuid, published3_.data());
  }

  void PublishAsIs2(fake::Firmware &machine) {
    std::memcpy(published2_.data(), &Entry2, sizeof(Entry2));
    machine.SetConfigurationTable(gEfiSmbiosTableGuid, published2_.data());
  }

  std::vector<UINT8> Bytes;
  SMBIOS_TABLE_3_0_ENTRY_POINT Entry3 = {};
  SMBIOS_TABLE_ENTRY_POINT Entry2 = {};

 private:
  /// What makes size bytes sum up to zero.
  static UINT8 Complement(const void *data, size_t size) {
    const auto *bytes = static_cast<const UINT8 *>(data);
    return static_cast<UINT8>(0 - std::accumulate(bytes, bytes + size, 0U));
  }

  std::vector<UINT8> placed_;
  std::vector<UINT8> published3_ = std::vector<UINT8>(sizeof(SMBIOS_TABLE_3_0_ENTRY_POINT));
  std::vector<UINT8> published2_ = std::vector<UINT8>(sizeof(SMBIOS_TABLE_ENTRY_POINT));
};

}  // namespace obv_host
