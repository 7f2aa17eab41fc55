#include <gtest/gtest.h>

#include <string>

#include "setup/portable/SelectionRecord.h"

namespace obv_setup {
namespace {

class SelectionRecordTest : public testing::Test {
 protected:
  SelectionRecordTest() { InitializeSelectionRecord(); }
  ~SelectionRecordTest() override { InitializeSelectionRecord(); }

  EFI_STATUS Get() {
    CHAR8 key[VELT_EVENT_KEY_SIZE] = VELT_SELECTION_KEY;
    return Get(key);
  }

  EFI_STATUS Get(CHAR8 *key) {
    UINT8 reserved[VELT_EVENT_KEY_SIZE] = {};
    UINT8 data[VELT_EVENT_DATA_SIZE] = {};
    EFI_STATUS status =
        gSelectionRecord.Handler.GetEventData(key, reserved, &Type, &DataSize, data);
    CopyMem(&Selection, data, sizeof(Selection));
    return status;
  }

  EFI_STATUS End() { return gSelectionRecord.Handler.EndEventData(); }

  std::u16string Name() const {
    std::u16string name;
    for (UINTN i = 0; i < VELT_SELECTION_NAME_LENGTH && Selection.ComponentName[i] != 0; i++) {
      name.push_back(static_cast<char16_t>(Selection.ComponentName[i]));
    }
    return name;
  }

  UINT32 Type = 0;
  UINT32 DataSize = 0;
  VELT_SELECTION Selection = {};
};

TEST_F(SelectionRecordTest, WithoutASelectionThereIsNone) {
  EXPECT_EQ(Get(), EFI_NOT_FOUND);
  EXPECT_EQ(End(), EFI_NOT_READY);
}

TEST_F(SelectionRecordTest, ASelectedComponentIsToldWithItsCategory) {
  SelectComponent({0x7001, 4, u"PCIEX16_1"});
  ASSERT_EQ(Get(), EFI_SUCCESS);
  EXPECT_EQ(Type, 7U);
  EXPECT_EQ(DataSize, 42U);
  EXPECT_EQ(+Selection.Category, 4);
  EXPECT_EQ(Name(), u"PCIEX16_1");
}

TEST_F(SelectionRecordTest, ItCountsForOneView) {
  SelectComponent({0x7001, 4, u"PCIEX16_1"});
  ASSERT_EQ(Get(), EFI_SUCCESS);
  EXPECT_EQ(End(), EFI_SUCCESS);
  EXPECT_EQ(Get(), EFI_NOT_FOUND);
  EXPECT_EQ(End(), EFI_NOT_READY);
}

TEST_F(SelectionRecordTest, ItStaysUntilItWasRead) {
  SelectComponent({0x7001, 4, u"PCIEX16_1"});
  EXPECT_EQ(End(), EFI_NOT_READY);
  EXPECT_EQ(Get(), EFI_SUCCESS);
}

TEST_F(SelectionRecordTest, ALaterSelectionReplacesAnEarlierOne) {
  SelectComponent({0x7001, 4, u"PCIEX16_1"});
  SelectComponent({0x7002, 6, u"CPU"});
  ASSERT_EQ(Get(), EFI_SUCCESS);
  EXPECT_EQ(+Selection.Category, 6);
  EXPECT_EQ(Name(), u"CPU");
}

TEST_F(SelectionRecordTest, ANameMayFillItsField) {
  SelectComponent({0x7001, 1, u"ABCDEFGHIJKLMNOPQRSTUVW"});
  ASSERT_EQ(Get(), EFI_SUCCESS);
  EXPECT_EQ(Name(), u"ABCDEFGHIJKLMNOPQRST");
}

TEST_F(SelectionRecordTest, OtherKeysHaveNoRecord) {
  SelectComponent({0x7001, 4, u"PCIEX16_1"});
  CHAR8 other[VELT_EVENT_KEY_SIZE] = "Cairnledgers";
  EXPECT_EQ(Get(other), EFI_NOT_FOUND);
  CHAR8 unpadded[VELT_EVENT_KEY_SIZE] = VELT_SELECTION_KEY;
  unpadded[VELT_EVENT_KEY_SIZE - 1] = 'x';
  EXPECT_EQ(Get(unpadded), EFI_NOT_FOUND);
  EXPECT_EQ(End(), EFI_NOT_READY);
}

TEST_F(SelectionRecordTest, MissingOutputsAreRefused) {
  SelectComponent({0x7001, 4, u"PCIEX16_1"});
  CHAR8 key[VELT_EVENT_KEY_SIZE] = VELT_SELECTION_KEY;
  UINT32 word = 0;
  UINT8 data[VELT_EVENT_DATA_SIZE];
  VELT_SETUP_EVENT_HANDLER_PROTOCOL &handler = gSelectionRecord.Handler;
  EXPECT_EQ(handler.GetEventData(nullptr, nullptr, &word, &word, data), EFI_INVALID_PARAMETER);
  EXPECT_EQ(handler.GetEventData(key, nullptr, nullptr, &word, data), EFI_INVALID_PARAMETER);
  EXPECT_EQ(handler.GetEventData(key, nullptr, &word, nullptr, data), EFI_INVALID_PARAMETER);
  EXPECT_EQ(handler.GetEventData(key, nullptr, &word, &word, nullptr), EFI_INVALID_PARAMETER);
}

}  // namespace
}  // namespace obv_setup
