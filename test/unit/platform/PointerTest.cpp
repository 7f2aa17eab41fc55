// Mouse and tablet: ranges, edges, shifts, and devices that are missing.

#include <limits>

#include "test/unit/stage/ConnectedHost.h"

#include "app/base/Geometry.h"
#include "platform/Pointer.h"

namespace {

using fake::Service;

struct Point {
  int X, Y;
  bool operator==(const Point &) const = default;
};

std::ostream &operator<<(std::ostream &out, const Point &point) {
  return out << "(" << point.X << ", " << point.Y << ")";
}

class Pointer : public ConnectedHost {
 protected:
  Pointer() {
    gGeometry.ViewWidth = 1920;
    gGeometry.ViewHeight = 1080;
  }
  void Start(UINT16 x, UINT16 y) {
    EFI_SIMPLE_POINTER_PROTOCOL *simple = nullptr;
    EFI_ABSOLUTE_POINTER_PROTOCOL *absolute = nullptr;
    EFI_HANDLE handle = nullptr;
    EXPECT_EQ(GetMouseProtocol(&simple, &absolute, &handle), EFI_SUCCESS);
    PointerInit(simple, absolute, handle, x, y);
  }
  /// Both devices, the mouse with this resolution.
  void AddDevices(UINT64 resolutionX = 1, UINT64 resolutionY = 1,
                  const fake::AbsolutePointer::Range &range = {}) {
    Machine.AddSimplePointer(resolutionX, resolutionY);
    Machine.AddAbsolutePointer(range);
  }
  Point Read() {
    data_ = {};
    PointerRead(nullptr, &data_);
    EXPECT_FALSE(data_.continue_reading);
    return {data_.point.x, data_.point.y};
  }
  bool Pressed() const { return data_.state == LV_INDEV_STATE_PRESSED; }
  Point Moved(INT32 x, INT32 y) {
    Machine.Mouse()->Move(x, y);
    return Read();
  }
  Point MovedTo(UINT64 x, UINT64 y) {
    Machine.Tablet()->MoveTo(x, y);
    return Read();
  }

  lv_indev_data_t data_;
};

TEST_F(Pointer, AResolutionOf16Moves14SixteenthsOfAPixelACount) {
  AddDevices(16, 16);
  Start(100, 100);
  EXPECT_EQ(Moved(1, 1), (Point{100, 100}));
  EXPECT_EQ(Moved(-1, -1), (Point{99, 99}));
  EXPECT_EQ(Moved(2, 8), (Point{100, 106}));
  EXPECT_EQ(Moved(-2, -16), (Point{98, 92}));
}

TEST_F(Pointer, TheShiftIsTheNumberOfTheResolutionsBitsMinusOne) {
  AddDevices(31, 32);
  Start(100, 100);
  EXPECT_EQ(gPointer.ShiftX, 4);
  EXPECT_EQ(gPointer.ShiftY, 5);
  EXPECT_EQ(Moved(16, 16), (Point{114, 107}));
}

TEST_F(Pointer, AResolutionOf1MovesFourteenPixelsACount) {
  AddDevices(1, 1);
  Start(100, 100);
  EXPECT_EQ(gPointer.ShiftX, 0);
  EXPECT_EQ(Moved(1, -2), (Point{114, 72}));
}

TEST_F(Pointer, AResolutionOf0ShiftsBy31) {
  AddDevices(0, 0);
  Start(100, 100);
  EXPECT_EQ(gPointer.ShiftX, 0xFFFF);
  EXPECT_EQ(gPointer.ShiftY, 0xFFFF);
  EXPECT_EQ(Moved(100, 100), (Point{100, 100}));
  EXPECT_EQ(Moved(-1, -1), (Point{99, 99}));
}

TEST_F(Pointer, OnlyTheLowFiveBitsOfAShiftAct) {
  AddDevices(UINT64{1} << 36, UINT64{1} << 63);
  Start(100, 100);
  EXPECT_EQ(gPointer.ShiftX, 36);
  EXPECT_EQ(gPointer.ShiftY, 63);
  EXPECT_EQ(Moved(16, 0), (Point{114, 100}));
}

TEST_F(Pointer, MovingPastTheRightAndBottomEdgesStops3PixelsBeforeThem) {
  AddDevices();
  Start(1000, 1000);
  EXPECT_EQ(Moved(10000, 10000), (Point{1917, 1077}));
  EXPECT_EQ(Moved(1, 1), (Point{1917, 1077}));
}

TEST_F(Pointer, MovingPastTheLeftAndTopEdgesStopsAt0) {
  AddDevices();
  Start(1000, 1000);
  EXPECT_EQ(Moved(-10000, -10000), (Point{0, 0}));
}

TEST_F(Pointer, TheWidestMovementsDoNotWrap) {
  AddDevices();
  Start(5, 5);
  constexpr INT32 kMost = std::numeric_limits<INT32>::max();
  EXPECT_EQ(Moved(kMost, kMost), (Point{1917, 1077}));
  EXPECT_EQ(Moved(std::numeric_limits<INT32>::min(), -kMost), (Point{0, 0}));
}

TEST_F(Pointer, TheStartIsKept3PixelsBeforeTheEdges) {
  AddDevices();
  Start(65535, 1078);
  EXPECT_EQ(Read(), (Point{1917, 1077}));
  EXPECT_EQ(Read(), (Point{1917, 1077}));
}

TEST_F(Pointer, OnlyTheLeftButtonPresses) {
  AddDevices();
  Start(10, 10);
  Machine.Mouse()->Move(0, 0, true);
  Read();
  EXPECT_TRUE(Pressed());
  Machine.Mouse()->Move(0, 0, false, true);
  Read();
  EXPECT_FALSE(Pressed());
}

TEST_F(Pointer, WithoutNewsTheLastStateIsReported) {
  AddDevices();
  Start(10, 10);
  Machine.Mouse()->Move(1, 1, true);
  EXPECT_EQ(Read(), (Point{24, 24}));
  EXPECT_EQ(Read(), (Point{24, 24}));
  EXPECT_TRUE(Pressed());
}

TEST_F(Pointer, OneReportIsTakenAReading) {
  AddDevices();
  Start(100, 100);
  Machine.Mouse()->Move(1, 0);
  Machine.Mouse()->Move(1, 0);
  Machine.Tablet()->MoveTo(0, 0);
  EXPECT_EQ(Read(), (Point{114, 100}));
  EXPECT_EQ(Read(), (Point{128, 100}));
  EXPECT_EQ(Read(), (Point{0, 0}));
}

TEST_F(Pointer, AFailingMouseLeavesTheTablet) {
  AddDevices();
  Start(100, 100);
  Machine.Mouse()->Move(1, 1);
  Machine.FailCall(Service::PointerGetState, 1, EFI_DEVICE_ERROR);
  EXPECT_EQ(MovedTo(0, 0), (Point{0, 0}));
}

TEST_F(Pointer, AFailingTabletIsNoNews) {
  AddDevices();
  Start(100, 100);
  Machine.FailCall(Service::AbsoluteGetState, 1, EFI_DEVICE_ERROR);
  EXPECT_EQ(MovedTo(0, 0), (Point{100, 100}));
  EXPECT_EQ(Log(), LogLines{});
}

TEST_F(Pointer, TheTabletsRangeCoversTheView) {
  AddDevices(1, 1, {.MinX = 100, .MinY = 200, .MaxX = 100 + 19200, .MaxY = 200 + 10800});
  Start(0, 0);
  EXPECT_EQ(gPointer.DivisorX, 100000u);
  EXPECT_EQ(gPointer.DivisorY, 100000u);
  EXPECT_EQ(MovedTo(100, 200), (Point{0, 0}));
  EXPECT_EQ(MovedTo(100 + 10 * 960 + 9, 200 + 10 * 540 + 9), (Point{960, 540}));
  EXPECT_EQ(MovedTo(19300, 11000), (Point{1917, 1077}));
}

TEST_F(Pointer, APositionBeforeTheMinimumWrapsToTheFarEdge) {
  AddDevices(1, 1, {.MinX = 100, .MinY = 100, .MaxX = 20000, .MaxY = 20000});
  Start(50, 50);
  EXPECT_EQ(MovedTo(99, 99), (Point{1917, 1077}));
}

TEST_F(Pointer, DivisorsAreComputedIn32Bits) {
  AddDevices(1, 1, {.MinX = 0, .MinY = 0x100000000, .MaxX = 0xFFFFFFFF, .MaxY = 0x100007FFF});
  Start(0, 0);
  EXPECT_EQ(gPointer.DivisorX, 0xFFFFFFFFu * 10000u / 1920);
  EXPECT_EQ(gPointer.DivisorY, 0x7FFFu * 10000u / 1080);
}

TEST_F(Pointer, ARangeOf0KeepsThePointerInItsPlace) {
  AddDevices(1, 1, {.MinX = 5, .MinY = 5, .MaxX = 5, .MaxY = 5});
  Start(300, 400);
  EXPECT_EQ(gPointer.DivisorX, 0u);
  EXPECT_EQ(MovedTo(5, 5), (Point{300, 400}));
  EXPECT_EQ(MovedTo(~UINT64{0}, 0), (Point{300, 400}));
}

TEST_F(Pointer, OneAxisMayHaveNoRange) {
  AddDevices(1, 1, {.MinX = 0, .MinY = 0, .MaxX = 19200, .MaxY = 0});
  Start(300, 400);
  EXPECT_EQ(MovedTo(9600, 77), (Point{960, 400}));
}

TEST_F(Pointer, OnlyTheLowByteOfTheTabletsButtonsPresses) {
  AddDevices();
  Start(0, 0);
  Machine.Tablet()->MoveTo(1, 1, 0x100);
  Read();
  EXPECT_FALSE(Pressed());
  Machine.Tablet()->MoveTo(1, 1, 0x180);
  Read();
  EXPECT_TRUE(Pressed());
}

TEST_F(Pointer, BothDevicesAreNeededAndLoggedWhenMissing) {
  EFI_SIMPLE_POINTER_PROTOCOL *simple = nullptr;
  EFI_ABSOLUTE_POINTER_PROTOCOL *absolute = nullptr;
  EFI_HANDLE handle = nullptr;
  Machine.AddAbsolutePointer();
  EXPECT_EQ(GetMouseProtocol(&simple, &absolute, &handle), EFI_UNSUPPORTED);
  EXPECT_EQ(absolute, nullptr);
  Machine.RemoveAbsolutePointer();
  Machine.AddSimplePointer();
  EXPECT_EQ(GetMouseProtocol(&simple, &absolute, &handle), EFI_UNSUPPORTED);
  EXPECT_EQ(simple, Machine.Mouse()->Protocol());
  EXPECT_EQ(handle, nullptr);
  EXPECT_EQ(Log(), LogLines(2, Error("[GetMouseProtocol] Error occurs: Unsupported\n")));
}

TEST_F(Pointer, TheConsolesHandleIsGivenWithBothDevices) {
  AddDevices();
  EFI_SIMPLE_POINTER_PROTOCOL *simple = nullptr;
  EFI_ABSOLUTE_POINTER_PROTOCOL *absolute = nullptr;
  EFI_HANDLE handle = nullptr;
  EXPECT_EQ(GetMouseProtocol(&simple, &absolute, &handle), EFI_SUCCESS);
  EXPECT_EQ(simple, Machine.Mouse()->Protocol());
  EXPECT_EQ(absolute, Machine.Tablet()->Protocol());
  EXPECT_EQ(handle, Machine.SystemTable.ConsoleInHandle);
}

TEST_F(Pointer, AMissingAddressIsRefusedAndLogged) {
  AddDevices();
  EFI_SIMPLE_POINTER_PROTOCOL *simple = nullptr;
  EFI_ABSOLUTE_POINTER_PROTOCOL *absolute = nullptr;
  EFI_HANDLE handle = nullptr;
  EXPECT_EQ(GetMouseProtocol(nullptr, &absolute, &handle), EFI_INVALID_PARAMETER);
  EXPECT_EQ(GetMouseProtocol(&simple, nullptr, &handle), EFI_INVALID_PARAMETER);
  EXPECT_EQ(GetMouseProtocol(&simple, &absolute, nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Log(), LogLines(3, Error("error GetMouseProtocol 325 Invalid Parameter\n")));
  EXPECT_EQ(Machine.Calls.CountOf(Service::HandleProtocol), 0u);
}

TEST_F(Pointer, WithoutAHandleNothingIsTakenOver) {
  AddDevices();
  PointerInit(Machine.Mouse()->Protocol(), Machine.Tablet()->Protocol(), nullptr, 50, 60);
  PointerInit(nullptr, nullptr, Machine.SystemTable.ConsoleInHandle, 50, 60);
  EXPECT_EQ(gPointer.Simple, nullptr);
  EXPECT_EQ(Moved(1, 1), (Point{0, 0}));
  EXPECT_FALSE(Pressed());
}

TEST_F(Pointer, TheMouseAloneIsTakenOver) {
  AddDevices(16, 32);
  PointerInit(Machine.Mouse()->Protocol(), nullptr, Machine.SystemTable.ConsoleInHandle, 50, 60);
  EXPECT_EQ(Moved(16, 16), (Point{64, 67}));
  EXPECT_EQ(MovedTo(0, 0), (Point{64, 67}));
}

TEST_F(Pointer, TheTabletAloneIsTakenOver) {
  AddDevices(16, 32, {.MinX = 0, .MinY = 0, .MaxX = 1920, .MaxY = 1080});
  PointerInit(nullptr, Machine.Tablet()->Protocol(), Machine.SystemTable.ConsoleInHandle, 50, 60);
  EXPECT_EQ(Moved(16, 16), (Point{50, 60}));
  EXPECT_EQ(MovedTo(300, 400), (Point{300, 400}));
}

TEST_F(Pointer, ThePositionIsGivenWhenBothAddressesAreThere) {
  AddDevices();
  Start(123, 456);
  UINT16 x = 9, y = 9;
  PointerGetPosition(&x, nullptr);
  PointerGetPosition(nullptr, &y);
  EXPECT_EQ(x, 9);
  EXPECT_EQ(y, 9);
  PointerGetPosition(&x, &y);
  EXPECT_EQ(x, 123);
  EXPECT_EQ(y, 456);
}

}  // namespace
