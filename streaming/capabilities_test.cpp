#include "streaming/capabilities.h"

#include <gtest/gtest.h>

#include <string>

#include "harness/files.h"
#include "harness/status_block.h"
#include "harness/system_log.h"

namespace {

using harness::Info;
using harness::Logged;
using harness::StatusBlock;

constexpr int kIfbActive = 19;
constexpr int kModel = 516;

class CapabilitiesTest : public testing::Test {
 protected:
  static void StoreRecordingFormat(const std::string& format) {
    harness::WriteFile("/var/tmp/lighttpd/streaming", "rfresolution\t" + format + "\n");
  }

  harness::SystemLog log_;
};

template <std::size_t Columns>
bool IsAllZero(const Flags<Columns>& flags) {
  bool zero = true;
  for (const std::int32_t flag : flags.columns) {
    zero = zero && flag == 0;
  }
  return zero;
}

TEST_F(CapabilitiesTest, FrameratesComeFromTheResolutionsRowOfTheRecordingFormat) {
  const FramerateTable* const tables[] = {
      &resolution_1920x1080_framerate_table_vb52r, &resolution_zero_framerate_table_vb52r,
      &resolution_1280x720_framerate_table_vb52r,  &resolution_720x480_framerate_table_vb52r,
      &resolution_720x576_framerate_table_vb52r,   &resolution_zero_framerate_table_vb52r,
      &resolution_640x360_framerate_table_vb52r};
  StatusBlock().SetByte(kModel, 3).Store();
  for (int format = 0; format < 12; ++format) {
    StoreRecordingFormat(std::to_string(format));
    for (int resolution = 0; resolution < 7; ++resolution) {
      EXPECT_EQ(GetSelectableFramerateTable(resolution), &tables[resolution]->rows[format])
          << "format " << format << " resolution " << resolution;
    }
    EXPECT_EQ(&SelectableResolutions(), &available_resolution_table_vb52r.rows[format]) << format;
  }
}

TEST_F(CapabilitiesTest, OtherRecordingFormatsOfferNothing) {
  StatusBlock().SetByte(kModel, 4).Store();
  for (const char* format : {"12", "255", "-1", "2147483647", "-2147483648", "99999999999"}) {
    SCOPED_TRACE(format);
    StoreRecordingFormat(format);
    for (int resolution = 0; resolution < 7; ++resolution) {
      EXPECT_TRUE(IsAllZero(*GetSelectableFramerateTable(resolution))) << resolution;
    }
    EXPECT_TRUE(IsAllZero(SelectableResolutions()));
  }
}

TEST_F(CapabilitiesTest, RecordingFormatsThatAreNoNumbersCountAsFormat0) {
  StatusBlock().SetByte(kModel, 3).Store();
  for (const char* format : {"", "x", "x3"}) {
    SCOPED_TRACE(format);
    StoreRecordingFormat(format);
    EXPECT_EQ(GetSelectableFramerateTable(2), &resolution_1280x720_framerate_table_vb52r.rows[0]);
    EXPECT_EQ(&SelectableResolutions(), &available_resolution_table_vb52r.rows[0]);
  }
}

TEST_F(CapabilitiesTest, OnlyTwoModelsCanStream) {
  for (int model = 0; model < 256; ++model) {
    StatusBlock().SetByte(kModel, model).Store();
    const bool can_stream = model == 3 || model == 4;
    EXPECT_EQ(IsAllZero(*GetSelectableFramerateTable(0)), !can_stream) << model;
    EXPECT_EQ(IsAllZero(SelectableResolutions()), !can_stream) << model;
    EXPECT_EQ(IsAllZero(*GetSelectableBitrateTable(0, 2, 0)), !can_stream) << model;
  }
}

struct BitrateCase {
  int resolution;
  int framerate;
  const BitrateTable* normal;
  const BitrateTable* ifb;
};

// Every pair of resolution and frame rate that has bit rates; all others have none. Frame rates are
// 0 60p, 1 50p, 2 60i, 3 50i, 4 30p, 5 25p.
const BitrateCase kBitrateCases[] = {
    {0, 2, &resolution_1920x1080_60i50i_table_vb52r, &resolution_1920x1080_60i50i_table_vb52r_ifb},
    {0, 3, &resolution_1920x1080_60i50i_table_vb52r, &resolution_1920x1080_60i50i_table_vb52r_ifb},
    {2, 0, &resolution_1280x720_60p50p_table_vb52r, &resolution_1280x720_60p50p_table_vb52r_ifb},
    {2, 1, &resolution_1280x720_60p50p_table_vb52r, &resolution_1280x720_60p50p_table_vb52r_ifb},
    {2, 4, &resolution_1280x720_30p25p_table_vb52r, &resolution_1280x720_30p25p_table_vb52r_ifb},
    {2, 5, &resolution_1280x720_30p25p_table_vb52r, &resolution_1280x720_30p25p_table_vb52r_ifb},
    {3, 2, &resolution_720x480_60i_576_50i_table_vb52r,
     &resolution_720x480_60i_576_50i_table_vb52r_ifb},
    {4, 3, &resolution_720x480_60i_576_50i_table_vb52r,
     &resolution_720x480_60i_576_50i_table_vb52r_ifb},
    {6, 0, &resolution_640x360_60p50p_table_vb52r, &resolution_640x360_60p50p_table_vb52r_ifb},
    {6, 1, &resolution_640x360_60p50p_table_vb52r, &resolution_640x360_60p50p_table_vb52r_ifb},
    {6, 4, &resolution_640x360_30p25p_table_vb52r, &resolution_640x360_30p25p_table_vb52r_ifb},
    {6, 5, &resolution_640x360_30p25p_table_vb52r, &resolution_640x360_30p25p_table_vb52r_ifb},
};

const BitrateTable* ExpectedTable(int resolution, int framerate, int ifb) {
  for (const BitrateCase& row : kBitrateCases) {
    if (row.resolution == resolution && row.framerate == framerate) {
      return ifb != 0 ? row.ifb : row.normal;
    }
  }
  return &resolution_zero_table;
}

TEST_F(CapabilitiesTest, BitratesComeFromResolutionFramerateAndReturnAudio) {
  for (const int ifb : {0, 1, 255}) {
    StatusBlock().SetByte(kModel, 3).SetByte(kIfbActive, ifb).Store();
    for (int resolution = 0; resolution < 7; ++resolution) {
      for (int framerate = 0; framerate < 6; ++framerate) {
        const BitrateTable* const table = ExpectedTable(resolution, framerate, ifb);
        for (int type = 0; type < 9; ++type) {
          EXPECT_EQ(GetSelectableBitrateTable(type, resolution, framerate), &table->rows[type])
              << "ifb " << ifb << " resolution " << resolution << " framerate " << framerate
              << " type " << type;
        }
      }
    }
  }
}

TEST_F(CapabilitiesTest, BitratesOfUnknownFrameratesAreThoseOf30pAnd25p) {
  StatusBlock().SetByte(kModel, 3).Store();
  for (const int framerate : {6, 7, -1, INT32_MAX, INT32_MIN}) {
    EXPECT_EQ(GetSelectableBitrateTable(0, 6, framerate),
              &resolution_640x360_30p25p_table_vb52r.rows[0])
        << framerate;
  }
}

TEST_F(CapabilitiesTest, BitratesDoNotDependOnTheRecordingFormat) {
  StatusBlock().SetByte(kModel, 3).Store();
  StoreRecordingFormat("255");
  EXPECT_EQ(GetSelectableBitrateTable(0, 2, 0), &resolution_1280x720_60p50p_table_vb52r.rows[0]);
}

TEST_F(CapabilitiesTest, NothingIsFoundOutsideOfTheTables) {
  StatusBlock().SetByte(kModel, 3).Store();
  for (const int resolution : {-1, 7, INT32_MAX, INT32_MIN}) {
    EXPECT_EQ(GetSelectableFramerateTable(resolution), nullptr) << resolution;
    EXPECT_EQ(GetSelectableBitrateTable(0, resolution, 0), nullptr) << resolution;
  }
  for (const int type : {-1, 9, INT32_MAX, INT32_MIN}) {
    EXPECT_EQ(GetSelectableBitrateTable(type, 0, 0), nullptr) << type;
  }
}

TEST_F(CapabilitiesTest, TheChoiceOfBitratesIsTracedForModelsThatCanStream) {
  StatusBlock().SetByte(kModel, 5).Store();
  GetSelectableBitrateTable(0, 0, 0);
  EXPECT_THAT(log_.TakeLines(), Logged());
  StatusBlock().SetByte(kModel, 4).Store();
  GetSelectableBitrateTable(8, 6, 1);
  GetSelectableBitrateTable(7, 5, 2);
  GetSelectableBitrateTable(0, 4, 3);
  GetSelectableBitrateTable(1, 3, 5);
  EXPECT_THAT(
      log_.Lines(),
      Logged(Info("##### GetSelectableBitrateTable model:4 5p6p:1 5i6i:0 [resolution:6 type:8]"),
             Info("##### GetSelectableBitrateTable model:4 5p6p:0 5i6i:1 [resolution:5 type:7]"),
             Info("##### GetSelectableBitrateTable model:4 5p6p:0 5i6i:1 [resolution:4 type:0]"),
             Info("##### GetSelectableBitrateTable model:4 5p6p:0 5i6i:0 [resolution:3 type:1]")));
}

}  // namespace
