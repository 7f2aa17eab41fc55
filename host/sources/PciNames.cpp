#include "host/sources/PciNames.h"

namespace obv_host {
namespace {

struct VendorName {
  UINT16 Vendor;
  const CHAR8 *Name;
};

/// Those whose devices sit on mainboards and in their slots.
constexpr VendorName kVendors[] = {
    {0x1000, "Broadcom / LSI"},
    {0x1002, "AMD"},
    {0x1013, "Cirrus Logic"},
    {0x1014, "IBM"},
    {0x101E, "American Megatrends"},
    {0x1022, "AMD"},
    {0x102B, "Matrox"},
    {0x103C, "HP"},
    {0x104C, "Texas Instruments"},
    {0x1077, "QLogic"},
    {0x10B5, "PLX"},
    {0x10DE, "NVIDIA"},
    {0x10DF, "Emulex"},
    {0x10EC, "Realtek"},
    {0x1102, "Creative"},
    {0x1106, "VIA"},
    {0x1137, "Cisco"},
    {0x1179, "Toshiba"},
    {0x1217, "O2 Micro"},
    {0x1234, "QEMU"},
    {0x126F, "Silicon Motion"},
    {0x12D8, "Pericom"},
    {0x1344, "Micron"},
    {0x1425, "Chelsio"},
    {0x144D, "Samsung"},
    {0x14C3, "MediaTek"},
    {0x14E4, "Broadcom"},
    {0x14F1, "Conexant"},
    {0x15AD, "VMware"},
    {0x15B3, "Mellanox"},
    {0x15B7, "Western Digital / SanDisk"},
    {0x168C, "Qualcomm Atheros"},
    {0x17CB, "Qualcomm"},
    {0x1912, "Renesas"},
    {0x1924, "Solarflare"},
    {0x1969, "Qualcomm Atheros"},
    {0x197B, "JMicron"},
    {0x1987, "Phison"},
    {0x19A2, "Emulex"},
    {0x1A03, "ASPEED"},
    {0x1AF4, "Red Hat / virtio"},
    {0x1B21, "ASMedia"},
    {0x1B36, "Red Hat / QEMU"},
    {0x1B4B, "Marvell"},
    {0x1B73, "Fresco Logic"},
    {0x1B96, "Western Digital"},
    {0x1BB1, "Seagate"},
    {0x1C5C, "SK hynix"},
    {0x1CC1, "ADATA"},
    {0x1CC4, "Union Memory"},
    {0x1D0F, "Amazon"},
    {0x1D6A, "Aquantia"},
    {0x1D97, "Longsys"},
    {0x1E0F, "Kioxia"},
    {0x1E49, "YMTC"},
    {0x1E4B, "MAXIO"},
    {0x2646, "Kingston"},
    {0x8086, "Intel"},
    {0x9005, "Adaptec"},
    {0xC0A9, "Micron / Crucial"},
};

struct ClassName {
  UINT8 BaseClass;
  UINT8 SubClass;
  const CHAR8 *Name;
};

/// What stands for every subclass that has no row; its row is the last of its class.
constexpr UINT8 kAnySubClass = 0xFF;

constexpr ClassName kClasses[] = {
    {0x00, 0x01, "VGA device"},
    {0x00, kAnySubClass, "Device of no class"},
    {0x01, 0x00, "SCSI controller"},
    {0x01, 0x01, "IDE controller"},
    {0x01, 0x04, "RAID controller"},
    {0x01, 0x05, "ATA controller"},
    {0x01, 0x06, "SATA controller"},
    {0x01, 0x07, "SAS controller"},
    {0x01, 0x08, "NVMe controller"},
    {0x01, 0x09, "UFS controller"},
    {0x01, kAnySubClass, "Storage controller"},
    {0x02, 0x00, "Ethernet controller"},
    {0x02, 0x07, "InfiniBand controller"},
    {0x02, kAnySubClass, "Network controller"},
    {0x03, 0x00, "VGA controller"},
    {0x03, 0x02, "3D controller"},
    {0x03, kAnySubClass, "Display controller"},
    {0x04, 0x00, "Video device"},
    {0x04, 0x01, "Audio device"},
    {0x04, 0x03, "HD Audio controller"},
    {0x04, kAnySubClass, "Multimedia device"},
    {0x05, kAnySubClass, "Memory controller"},
    {0x06, 0x00, "Host bridge"},
    {0x06, 0x01, "ISA bridge"},
    {0x06, 0x04, "PCI bridge"},
    {0x06, 0x07, "CardBus bridge"},
    {0x06, kAnySubClass, "Bridge"},
    {0x07, 0x00, "Serial port"},
    {0x07, 0x01, "Parallel port"},
    {0x07, kAnySubClass, "Communication controller"},
    {0x08, 0x05, "SD host controller"},
    {0x08, 0x06, "IOMMU"},
    {0x08, kAnySubClass, "System device"},
    {0x09, kAnySubClass, "Input device"},
    {0x0A, kAnySubClass, "Docking station"},
    {0x0B, kAnySubClass, "Processor"},
    {0x0C, 0x00, "FireWire controller"},
    {0x0C, 0x03, "USB controller"},
    {0x0C, 0x04, "Fibre Channel controller"},
    {0x0C, 0x05, "SMBus controller"},
    {0x0C, kAnySubClass, "Serial bus controller"},
    {0x0D, 0x11, "Bluetooth controller"},
    {0x0D, 0x80, "Wi-Fi controller"},
    {0x0D, kAnySubClass, "Wireless controller"},
    {0x0E, kAnySubClass, "I/O processor"},
    {0x0F, kAnySubClass, "Satellite controller"},
    {0x10, kAnySubClass, "Encryption controller"},
    {0x11, kAnySubClass, "Signal processor"},
    {0x12, kAnySubClass, "Accelerator"},
    {0x13, kAnySubClass, "Instrumentation"},
    {0x40, kAnySubClass, "Coprocessor"},
};

}  // namespace

const CHAR8 *PciVendorName(UINT16 vendor) {
  for (const VendorName &row : kVendors) {
    if (row.Vendor == vendor) {
      return row.Name;
    }
  }
  return nullptr;
}

const CHAR8 *PciClassName(UINT8 baseClass, UINT8 subClass) {
  for (const ClassName &row : kClasses) {
    if (row.BaseClass == baseClass && (row.SubClass == subClass || row.SubClass == kAnySubClass)) {
      return row.Name;
    }
  }
  return "Device of an unknown class";
}

}  // namespace obv_host
