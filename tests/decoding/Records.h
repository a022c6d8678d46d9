// Records made by hand and at random, for tests and harnesses.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "decoding/J1939.h"
#include "decoding/LogRecord.h"

namespace lum::decoding {

/// A data frame as the reader for J1939 gives it.
inline LogRecord BusRecord(std::uint32_t id, bool isExtended, std::string_view channel = "can0") {
  LogRecord record;
  record.isBus = true;
  record.bus.id = id;
  record.bus.isExtended = isExtended;
  record.bus.channel = channel;
  if (isExtended) {
    const J1939Id parts = SplitJ1939Id(id);
    record.bus.pgn = parts.pgn;
    record.bus.source = parts.source;
    record.bus.destination = parts.destination;
    record.bus.priority = parts.priority;
  }
  return record;
}

/// Records of few different parts, so that conditions are met often. `choose(n)` gives numbers
/// below n. The views lead into the maker, valid until its next record.
class CRecordMaker {
 public:
  template <typename Choose>
  LogRecord Make(Choose choose) {
    LogRecord record;
    switch (choose(4)) {
      case 0:
      case 1:
        record =
            BusRecord(kIds[choose(kIds.size())], choose(2) == 0, kNames[choose(kNames.size())]);
        record.bus.frame = "98FEF1008F00112233445566";
        record.bus.message = choose(2) == 0 ? ">0000FEF106FF00112233445566;" : "";
        break;
      case 2:
        record.address = kNames[choose(kNames.size())];
        break;
      default:
        break;
    }
    m_fields.clear();
    for (std::size_t count = choose(4); count > 0; --count) {
      m_fields.push_back(kNames[choose(kNames.size())]);
    }
    record.fields = m_fields;
    record.line = kNames[choose(kNames.size())];
    record.number = choose(5);
    record.kind = choose(8) == 0 ? RecordKind::Remark : RecordKind::Data;
    return record;
  }

 private:
  static constexpr std::array<std::uint32_t, 8> kIds = {0x123,      0x122,      0x7FF,      0x0,
                                                        0x18FEF100, 0x0CF00400, 0x18EEFF17, 0xFF00};
  static constexpr std::array<std::string_view, 9> kNames = {"",
                                                             "can0",
                                                             "can1",
                                                             "GPGGA",
                                                             "GNGGA",
                                                             "a-name-of-16-byt",
                                                             "a-name-of-17-byte",
                                                             "a-name-of-17-bytf",
                                                             "1.5"};
  std::vector<std::string_view> m_fields;
};

}  // namespace lum::decoding
