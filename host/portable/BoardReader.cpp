#include "host/portable/BoardReader.h"

#include "host/portable/BoardChecks.h"

namespace obv_host {
namespace {

constexpr UINTN kChecksumEnd = OFFSET_OF(BoardHeader, Checksum) + sizeof(UINT32);

bool CheckIdentity(const BoardHeader &header, BoardFault *fault) {
  if (CompareMem(header.Magic, kBoardMagic, sizeof(kBoardMagic)) != 0) {
    return Refuse(fault, "not a board file");
  }
  if (header.Version != kBoardVersion) {
    return Refuse(fault, "format version %d, this host reads version %d", header.Version,
                  kBoardVersion);
  }
  if (header.HeaderSize != sizeof(BoardHeader)) {
    return Refuse(fault, "header of %d bytes, expected %d", header.HeaderSize, sizeof(BoardHeader));
  }
  return true;
}

/// Both sides in 64 bits: the largest counts cannot overflow them.
bool CheckSizes(const BoardHeader &header, UINTN size, BoardFault *fault) {
  if (header.TotalSize != size) {
    return Refuse(fault, "%ld bytes, the header says %ld", size,
                  static_cast<UINT64>(header.TotalSize));
  }
  UINT64 expected = sizeof(BoardHeader) + header.StyleCount * sizeof(BoardStyle) +
                    header.ComponentCount * sizeof(BoardComponent) +
                    header.InfoCount * sizeof(BoardInfo) +
                    header.HardwareCount * sizeof(BoardHardware) + header.PictureSize;
  if (expected != size) {
    return Refuse(fault, "%ld bytes, its records and picture take %ld", size, expected);
  }
  return true;
}

bool CheckFile(const UINT8 *bytes, UINTN size, BoardHeader *header, BoardFault *fault) {
  if (bytes == nullptr || size < sizeof(BoardHeader)) {
    return Refuse(fault, "%ld bytes are too few", size);
  }
  CopyMem(header, bytes, sizeof(*header));
  if (!CheckIdentity(*header, fault) || !CheckSizes(*header, size, fault)) {
    return false;
  }
  UINT32 checksum = CalculateCrc32(const_cast<UINT8 *>(bytes) + kChecksumEnd, size - kChecksumEnd);
  if (checksum != header->Checksum) {
    return Refuse(fault, "checksum 0x%08x, the header says 0x%08x", checksum, header->Checksum);
  }
  return true;
}

void LocateRecords(const UINT8 *bytes, Board *board) {
  const BoardHeader &header = board->Header;
  board->Styles = bytes + sizeof(BoardHeader);
  board->Components = board->Styles + header.StyleCount * sizeof(BoardStyle);
  board->Infos = board->Components + header.ComponentCount * sizeof(BoardComponent);
  board->Hardware = board->Infos + header.InfoCount * sizeof(BoardInfo);
  board->Picture = board->Hardware + header.HardwareCount * sizeof(BoardHardware);
}

}  // namespace

EFI_STATUS OpenBoard(const void *data, UINTN size, Board *board, BoardFault *fault) {
  ZeroMem(board, sizeof(*board));
  ZeroMem(fault, sizeof(*fault));
  const UINT8 *bytes = static_cast<const UINT8 *>(data);
  bool sound = CheckFile(bytes, size, &board->Header, fault);
  if (sound) {
    LocateRecords(bytes, board);
    sound = CheckHeader(*board, fault) && CheckStyles(*board, fault) && CheckInfos(*board, fault) &&
            CheckHardware(*board, fault) && CheckComponents(*board, fault) &&
            CheckPicture(*board, fault);
  }
  if (!sound) {
    ZeroMem(board, sizeof(*board));
    return EFI_COMPROMISED_DATA;
  }
  return EFI_SUCCESS;
}

}  // namespace obv_host
