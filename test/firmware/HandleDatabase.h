// Handles, the protocols on them, who opened them, and notifications of new ones. Handles are
// enumerated in the order of their creation.

#pragma once

#include "test/firmware/Edk2.h"

namespace fake {

class HandleDatabase {
 public:
  using SignalEvent = std::function<void(EFI_EVENT)>;

  explicit HandleDatabase(SignalEvent signal) : signal_(std::move(signal)) {}

  EFI_STATUS Install(EFI_HANDLE *handle, const EFI_GUID *protocol, VOID *interface);
  EFI_STATUS Reinstall(EFI_HANDLE handle, const EFI_GUID *protocol, VOID *oldInterface,
                       VOID *newInterface);
  EFI_STATUS Uninstall(EFI_HANDLE handle, const EFI_GUID *protocol, VOID *interface);

  struct OpenRequest {
    EFI_HANDLE Agent = nullptr;
    EFI_HANDLE Controller = nullptr;
    UINT32 Attributes = EFI_OPEN_PROTOCOL_BY_HANDLE_PROTOCOL;
  };
  EFI_STATUS Open(EFI_HANDLE handle, const EFI_GUID *protocol, VOID **interface,
                  const OpenRequest &request);
  EFI_STATUS Close(EFI_HANDLE handle, const EFI_GUID *protocol, EFI_HANDLE agent,
                   EFI_HANDLE controller);
  EFI_STATUS OpenInformation(EFI_HANDLE handle, const EFI_GUID *protocol,
                             std::vector<EFI_OPEN_PROTOCOL_INFORMATION_ENTRY> *entries) const;
  EFI_STATUS Protocols(EFI_HANDLE handle, std::vector<const EFI_GUID *> *protocols) const;

  EFI_STATUS RegisterNotify(const EFI_GUID *protocol, EFI_EVENT event, VOID **registration);
  /// Forgets the registrations of an event that is being closed.
  void DropEvent(EFI_EVENT event);
  EFI_STATUS Search(EFI_LOCATE_SEARCH_TYPE type, const EFI_GUID *protocol, VOID *registration,
                    std::vector<EFI_HANDLE> *found);
  /// Marks the handle that a search by registration found as seen.
  void TakeNews(VOID *registration);
  EFI_STATUS LocateProtocol(const EFI_GUID *protocol, VOID *registration, VOID **interface);
  EFI_STATUS LocateDevicePath(const EFI_GUID *protocol, EFI_DEVICE_PATH_PROTOCOL **path,
                              EFI_HANDLE *handle) const;

  /// Interface on a handle, or null; leaves no trace in the open accounting.
  VOID *Interface(EFI_HANDLE handle, const EFI_GUID &protocol) const;
  bool IsHandle(EFI_HANDLE handle) const { return Find(handle) != nullptr; }
  size_t HandleCount() const { return handles_.size(); }
  /// Opens by OpenProtocol that were not closed, except those for which no close is due
  /// (BY_HANDLE_PROTOCOL, GET_PROTOCOL, TEST_PROTOCOL).
  size_t UnclosedCount() const;

 private:
  struct OpenEntry {
    EFI_HANDLE Agent;
    EFI_HANDLE Controller;
    UINT32 Attributes;
    UINT32 Count;
  };
  struct Entry {
    EFI_GUID Guid;
    VOID *Interface;
    std::vector<OpenEntry> Opens;
  };
  struct Handle {
    std::vector<std::unique_ptr<Entry>> Protocols;
  };
  struct Registration {
    EFI_GUID Guid;
    EFI_EVENT Event;
    std::deque<EFI_HANDLE> News;
  };
  Handle *Find(EFI_HANDLE handle) const;
  static Entry *FindEntry(const Handle &handle, const EFI_GUID &guid);
  Registration *FindRegistration(VOID *key) const;
  void Announce(EFI_HANDLE handle, const EFI_GUID &guid);
  EFI_STATUS CheckOpen(const Entry &entry, const OpenRequest &request) const;

  SignalEvent signal_;
  std::vector<std::unique_ptr<Handle>> handles_;
  std::vector<std::unique_ptr<Registration>> registrations_;
};

}  // namespace fake
