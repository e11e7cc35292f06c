#include "streaming/capability_tables.h"

std::int32_t IndexOfBitrateCode(std::int32_t code) {
  std::int32_t index = 0;
  while (index < std::int32_t{kBitrateRows} && bitrate_translate_table[index] != code) {
    ++index;
  }
  return index;
}

namespace {

/// Makes these columns of a table available in these rows; both are sets of bits.
struct Rule {
  std::uint32_t rows;
  std::uint32_t columns;
};

constexpr std::uint32_t Bit(std::size_t number) { return std::uint32_t{1} << number; }

/// The table that follows from the rules; what no rule names is not available.
template <typename Table, std::size_t Count>
constexpr Table Available(const Rule (&rules)[Count]) {
  Table table = {};
  for (const Rule& rule : rules) {
    for (std::size_t row = 0; row < Table::kRows; ++row) {
      for (std::size_t column = 0; column < Table::kColumns; ++column) {
        if ((rule.rows & Bit(row)) != 0 && (rule.columns & Bit(column)) != 0) {
          table.rows[row].columns[column] = 1;
        }
      }
    }
  }
  return table;
}

// Rows of the frame rate and resolution tables.

constexpr std::uint32_t Format(std::size_t format) { return Bit(format); }
constexpr std::uint32_t kFormats0To2 = Format(0) | Format(1) | Format(2);
constexpr std::uint32_t kFormats3To5 = Format(3) | Format(4) | Format(5);

// Columns of the frame rate tables.

constexpr std::uint32_t k60p = Bit(0);
constexpr std::uint32_t k60i = Bit(1);
constexpr std::uint32_t k30p = Bit(2);
constexpr std::uint32_t k50p = Bit(3);
constexpr std::uint32_t k50i = Bit(4);
constexpr std::uint32_t k25p = Bit(5);

// Columns of the resolution table.

constexpr std::uint32_t k1920x1080 = Bit(0);
constexpr std::uint32_t k1280x720 = Bit(2);
constexpr std::uint32_t k720x480 = Bit(3);
constexpr std::uint32_t k720x576 = Bit(4);
constexpr std::uint32_t k640x360 = Bit(5);

// Rows of the bit rate tables.

constexpr std::uint32_t kUdp = Bit(0);
constexpr std::uint32_t kUdpn = Bit(1);
constexpr std::uint32_t kUdpl = Bit(2);
constexpr std::uint32_t kTcp = Bit(3);
constexpr std::uint32_t kRtsp = Bit(4);
constexpr std::uint32_t kZixim = Bit(5);
constexpr std::uint32_t kZixil = Bit(6);
constexpr std::uint32_t kRtmp = Bit(7);
constexpr std::uint32_t kRtp = Bit(8);
constexpr std::uint32_t kAnyUdp = kUdp | kUdpn | kUdpl;
constexpr std::uint32_t kAllButTcp = kAnyUdp | kRtsp | kZixim | kZixil | kRtmp | kRtp;

// Columns of the bit rate tables.

constexpr std::uint32_t k0_3M = Bit(1);
constexpr std::uint32_t k0_8M = Bit(2);
constexpr std::uint32_t k1_5M = Bit(3);
constexpr std::uint32_t k3_0M = Bit(5);
constexpr std::uint32_t k5_0M = Bit(6);
constexpr std::uint32_t k8_0M = Bit(7);
constexpr std::uint32_t k12M = Bit(9);

}  // namespace

constexpr FramerateTable resolution_1920x1080_framerate_table_vb52r = Available<FramerateTable>({
    {kFormats0To2, k60i},
    {kFormats3To5, k50i},
});

constexpr FramerateTable resolution_1280x720_framerate_table_vb52r = Available<FramerateTable>({
    {Format(0) | Format(6), k60p | k30p},
    {Format(1) | Format(2) | Format(8), k30p},
    {Format(3) | Format(7), k50p | k25p},
    {Format(4) | Format(5) | Format(9), k25p},
});

constexpr FramerateTable resolution_720x480_framerate_table_vb52r = Available<FramerateTable>({
    {kFormats0To2 | Format(6) | Format(8) | Format(10), k60i},
});

constexpr FramerateTable resolution_720x576_framerate_table_vb52r = Available<FramerateTable>({
    {kFormats3To5 | Format(7) | Format(9) | Format(11), k50i},
});

constexpr FramerateTable resolution_640x360_framerate_table_vb52r = Available<FramerateTable>({
    {Format(0) | Format(6), k60p | k30p},
    {Format(1) | Format(2) | Format(8) | Format(10), k30p},
    {Format(3) | Format(7), k50p | k25p},
    {Format(4) | Format(5) | Format(9) | Format(11), k25p},
});

constexpr FramerateTable resolution_zero_framerate_table_vb52r = {};

constexpr ResolutionTable available_resolution_table_vb52r = Available<ResolutionTable>({
    {kFormats0To2, k1920x1080 | k1280x720 | k720x480 | k640x360},
    {kFormats3To5, k1920x1080 | k1280x720 | k720x576 | k640x360},
    {Format(6) | Format(8), k1280x720 | k720x480 | k640x360},
    {Format(7) | Format(9), k1280x720 | k720x576 | k640x360},
    {Format(10), k720x480 | k640x360},
    {Format(11), k720x576 | k640x360},
});

constexpr BitrateTable resolution_1920x1080_60i50i_table_vb52r = Available<BitrateTable>({
    {kAnyUdp, k3_0M | k5_0M | k8_0M | k12M},
    {kRtsp | kZixim | kRtp, k3_0M | k5_0M},
    {kZixil | kRtmp, k3_0M},
});

constexpr BitrateTable resolution_1920x1080_60i50i_table_vb52r_ifb = Available<BitrateTable>({
    {kUdpl, k3_0M | k5_0M | k8_0M},
    {kRtp, k3_0M | k5_0M},
    {kUdp | kUdpn | kRtsp | kZixim | kZixil, k3_0M},
});

constexpr BitrateTable resolution_1280x720_60p50p_table_vb52r =
    resolution_1920x1080_60i50i_table_vb52r;

constexpr BitrateTable resolution_1280x720_60p50p_table_vb52r_ifb =
    resolution_1920x1080_60i50i_table_vb52r_ifb;

constexpr BitrateTable resolution_1280x720_30p25p_table_vb52r = Available<BitrateTable>({
    {kAnyUdp, k1_5M | k3_0M | k5_0M | k8_0M},
    {kRtsp | kZixim | kRtp, k1_5M | k3_0M | k5_0M},
    {kZixil | kRtmp, k1_5M | k3_0M},
});

constexpr BitrateTable resolution_1280x720_30p25p_table_vb52r_ifb = Available<BitrateTable>({
    {kUdpl, k1_5M | k3_0M | k5_0M | k8_0M},
    {kRtp, k1_5M | k3_0M | k5_0M},
    {kUdp | kUdpn | kRtsp | kZixim | kZixil, k1_5M | k3_0M},
    {kRtmp, k1_5M},
});

constexpr BitrateTable resolution_720x480_60i_576_50i_table_vb52r = Available<BitrateTable>({
    {kAnyUdp, k0_3M | k0_8M | k1_5M | k3_0M | k5_0M | k8_0M},
    {kRtsp | kZixim | kRtp, k0_3M | k0_8M | k1_5M | k3_0M | k5_0M},
    {kZixil | kRtmp, k0_3M | k0_8M | k1_5M | k3_0M},
});

constexpr BitrateTable resolution_720x480_60i_576_50i_table_vb52r_ifb = Available<BitrateTable>({
    {kUdpl, k0_3M | k0_8M | k1_5M | k3_0M | k5_0M | k8_0M},
    {kRtp, k0_3M | k0_8M | k1_5M | k3_0M | k5_0M},
    {kUdp | kUdpn | kRtsp | kZixim | kZixil, k0_3M | k0_8M | k1_5M | k3_0M},
    {kRtmp, k0_3M | k0_8M | k1_5M},
});

constexpr BitrateTable resolution_640x360_60p50p_table_vb52r = Available<BitrateTable>({
    {kAllButTcp, k1_5M | k3_0M},
});

constexpr BitrateTable resolution_640x360_60p50p_table_vb52r_ifb = Available<BitrateTable>({
    {kAllButTcp, k1_5M},
    {kAllButTcp & ~kRtmp, k3_0M},
});

constexpr BitrateTable resolution_640x360_30p25p_table_vb52r = Available<BitrateTable>({
    {kAllButTcp, k0_3M | k0_8M | k1_5M | k3_0M},
});

// The only table that offers anything over TCP; the product ships it that way.
constexpr BitrateTable resolution_640x360_30p25p_table_vb52r_ifb = Available<BitrateTable>({
    {kAllButTcp | kTcp, k0_3M | k0_8M | k1_5M},
    {(kAllButTcp & ~kRtmp) | kTcp, k3_0M},
});

constexpr BitrateTable resolution_zero_table = {};
