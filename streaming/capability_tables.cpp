#include "streaming/capability_tables.h"

#include <initializer_list>

namespace {

// The rows of the frame rate and resolution tables are the numbers of the recording formats.
enum FramerateColumn { k60p, k60i, k30p, k50p, k50i, k25p };
enum ResolutionColumn { k1920x1080, k1440x1080, k1280x720, k720x480, k720x576, k640x360, k480x270 };
enum BitrateRow { kUdp, kUdpn, kUdpl, kTcp, kRtsp, kZixim, kZixil, kRtmp, kRtp };
enum BitrateColumn { k0_2M, k0_3M, k0_8M, k1_5M, k2_5M, k3_0M, k5_0M, k8_0M, k10M, k12M };

/// Makes these columns of a table available in these rows.
struct Rule {
  std::initializer_list<std::size_t> rows;
  std::initializer_list<std::size_t> columns;
};

/// The table that follows from the rules; what no rule names is not available.
template <typename Table>
constexpr Table Available(std::initializer_list<Rule> rules) {
  Table table = {};
  for (const Rule& rule : rules) {
    for (const std::size_t row : rule.rows) {
      for (const std::size_t column : rule.columns) {
        table.rows[row].columns[column] = 1;
      }
    }
  }
  return table;
}

}  // namespace

constexpr FramerateTable resolution_1920x1080_framerate_table_vb52r = Available<FramerateTable>({
    {{0, 1, 2}, {k60i}},
    {{3, 4, 5}, {k50i}},
});

constexpr FramerateTable resolution_1280x720_framerate_table_vb52r = Available<FramerateTable>({
    {{0, 6}, {k60p, k30p}},
    {{1, 2, 8}, {k30p}},
    {{3, 7}, {k50p, k25p}},
    {{4, 5, 9}, {k25p}},
});

constexpr FramerateTable resolution_720x480_framerate_table_vb52r = Available<FramerateTable>({
    {{0, 1, 2, 6, 8, 10}, {k60i}},
});

constexpr FramerateTable resolution_720x576_framerate_table_vb52r = Available<FramerateTable>({
    {{3, 4, 5, 7, 9, 11}, {k50i}},
});

constexpr FramerateTable resolution_640x360_framerate_table_vb52r = Available<FramerateTable>({
    {{0, 6}, {k60p, k30p}},
    {{1, 2, 8, 10}, {k30p}},
    {{3, 7}, {k50p, k25p}},
    {{4, 5, 9, 11}, {k25p}},
});

constexpr FramerateTable resolution_zero_framerate_table_vb52r = {};

constexpr ResolutionTable available_resolution_table_vb52r = Available<ResolutionTable>({
    {{0, 1, 2}, {k1920x1080, k1280x720, k720x480, k640x360}},
    {{3, 4, 5}, {k1920x1080, k1280x720, k720x576, k640x360}},
    {{6, 8}, {k1280x720, k720x480, k640x360}},
    {{7, 9}, {k1280x720, k720x576, k640x360}},
    {{10}, {k720x480, k640x360}},
    {{11}, {k720x576, k640x360}},
});

constexpr BitrateTable resolution_1920x1080_60i50i_table_vb52r = Available<BitrateTable>({
    {{kUdp, kUdpn, kUdpl}, {k3_0M, k5_0M, k8_0M, k12M}},
    {{kRtsp, kZixim, kRtp}, {k3_0M, k5_0M}},
    {{kZixil, kRtmp}, {k3_0M}},
});

constexpr BitrateTable resolution_1920x1080_60i50i_table_vb52r_ifb = Available<BitrateTable>({
    {{kUdpl}, {k3_0M, k5_0M, k8_0M}},
    {{kRtp}, {k3_0M, k5_0M}},
    {{kUdp, kUdpn, kRtsp, kZixim, kZixil}, {k3_0M}},
});

constexpr BitrateTable resolution_1280x720_60p50p_table_vb52r =
    resolution_1920x1080_60i50i_table_vb52r;

constexpr BitrateTable resolution_1280x720_60p50p_table_vb52r_ifb =
    resolution_1920x1080_60i50i_table_vb52r_ifb;

constexpr BitrateTable resolution_1280x720_30p25p_table_vb52r = Available<BitrateTable>({
    {{kUdp, kUdpn, kUdpl}, {k1_5M, k3_0M, k5_0M, k8_0M}},
    {{kRtsp, kZixim, kRtp}, {k1_5M, k3_0M, k5_0M}},
    {{kZixil, kRtmp}, {k1_5M, k3_0M}},
});

constexpr BitrateTable resolution_1280x720_30p25p_table_vb52r_ifb = Available<BitrateTable>({
    {{kUdpl}, {k1_5M, k3_0M, k5_0M, k8_0M}},
    {{kRtp}, {k1_5M, k3_0M, k5_0M}},
    {{kUdp, kUdpn, kRtsp, kZixim, kZixil}, {k1_5M, k3_0M}},
    {{kRtmp}, {k1_5M}},
});

constexpr BitrateTable resolution_720x480_60i_576_50i_table_vb52r = Available<BitrateTable>({
    {{kUdp, kUdpn, kUdpl}, {k0_3M, k0_8M, k1_5M, k3_0M, k5_0M, k8_0M}},
    {{kRtsp, kZixim, kRtp}, {k0_3M, k0_8M, k1_5M, k3_0M, k5_0M}},
    {{kZixil, kRtmp}, {k0_3M, k0_8M, k1_5M, k3_0M}},
});

constexpr BitrateTable resolution_720x480_60i_576_50i_table_vb52r_ifb = Available<BitrateTable>({
    {{kUdpl}, {k0_3M, k0_8M, k1_5M, k3_0M, k5_0M, k8_0M}},
    {{kRtp}, {k0_3M, k0_8M, k1_5M, k3_0M, k5_0M}},
    {{kUdp, kUdpn, kRtsp, kZixim, kZixil}, {k0_3M, k0_8M, k1_5M, k3_0M}},
    {{kRtmp}, {k0_3M, k0_8M, k1_5M}},
});

constexpr BitrateTable resolution_640x360_60p50p_table_vb52r = Available<BitrateTable>({
    {{kUdp, kUdpn, kUdpl, kRtsp, kZixim, kZixil, kRtmp, kRtp}, {k1_5M, k3_0M}},
});

constexpr BitrateTable resolution_640x360_60p50p_table_vb52r_ifb = Available<BitrateTable>({
    {{kUdp, kUdpn, kUdpl, kRtsp, kZixim, kZixil, kRtmp, kRtp}, {k1_5M}},
    {{kUdp, kUdpn, kUdpl, kRtsp, kZixim, kZixil, kRtp}, {k3_0M}},
});

constexpr BitrateTable resolution_640x360_30p25p_table_vb52r = Available<BitrateTable>({
    {{kUdp, kUdpn, kUdpl, kRtsp, kZixim, kZixil, kRtmp, kRtp}, {k0_3M, k0_8M, k1_5M, k3_0M}},
});

// Deliberate: this is the only table that offers anything over TCP.
constexpr BitrateTable resolution_640x360_30p25p_table_vb52r_ifb = Available<BitrateTable>({
    {{kUdp, kUdpn, kUdpl, kTcp, kRtsp, kZixim, kZixil, kRtmp, kRtp}, {k0_3M, k0_8M, k1_5M}},
    {{kUdp, kUdpn, kUdpl, kTcp, kRtsp, kZixim, kZixil, kRtp}, {k3_0M}},
});

constexpr BitrateTable resolution_zero_table = {};
