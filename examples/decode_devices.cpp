// Raw device data becomes engineering values: decodes a file that has a line for each device, its
// kind and what it sent, and prints each value with its unit. The operations of formulas are called
// on the value that takes the result and answer 1 or 0; scale and offset are ordinary arithmetic.
// Usage: decode_devices [FILE]
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "values/LumType.h"

namespace {

struct Reading {
  const char* quantity;
  CLumDouble value;
  int decimals;
  const char* unit;
};
using Readings = std::vector<Reading>;

CLumIoName TextOf(const std::string& bytes) {
  return CStringA(bytes.data(), static_cast<int>(bytes.size()));
}

// Every decoder gives the readings of a line, none when the device sent something else. The type
// codes of fields stand in docs/formulas.md.

// Bytes count up to the first text that is none; further ones than the depth's do not matter.
Readings DecodeEchoSounder(const std::string& raw) {
  std::istringstream digits(raw);
  std::string bytes;
  for (unsigned int byte = 0; digits >> std::hex >> byte && byte <= 0xFF;) {
    bytes.push_back(static_cast<char>(byte));
  }
  CLumIoName record = TextOf(bytes);
  CLumDouble int32Reversed(-3), depth;
  if (depth.BinVal(record, int32Reversed, false) == 0) {
    return {};
  }
  return {{"depth", depth * 0.001, 3, "m"}};
}

// A model for one axis sends no pitch. Lenient, that counts as level.
Readings DecodeInclinometer(const std::string& raw) {
  CLumIoName frame = TextOf(raw);
  CLumDouble int16(2), byte0(0), byte2(2), roll, pitch;
  if (roll.CanVal(frame, int16, byte0, false) == 0 ||
      pitch.CanVal(frame, int16, byte2, true) == 0) {
    return {};
  }
  return {{"roll", roll * 0.01, 2, "°"}, {"pitch", pitch * 0.01, 2, "°"}};
}

// SAE J1939-71, engine temperature 1: 1 °C per bit from -40 °C on; 255 says "not available".
Readings DecodeCoolant(const std::string& raw) {
  CLumIoName frame = TextOf(raw);
  CLumDouble uint8(6), byte0(0), notAvailable(255), sent, temperature;
  if (sent.CanVal(frame, uint8, byte0, false) == 0 ||
      temperature.CheckInValid(sent, notAvailable) == 0) {
    return {};
  }
  return {{"coolant temperature", temperature - 40.0, 0, "°C"}};
}

// SAE J1939-71, electronic engine controller 1: 0.125 rpm per bit.
Readings DecodeEngine(const std::string& raw) {
  CLumIoName message = TextOf(raw);
  CLumDouble uint8(6), uint16(7), byte3(3), bit0(0), fourBits(4), speed, mode;
  if (speed.J1939Val(message, uint16, byte3, false) == 0 ||
      mode.J1939BitsVal(message, uint8, bit0, fourBits, false) == 0) {
    return {};
  }
  return {{"engine speed", speed * 0.125, 1, "rpm"}, {"torque mode", mode, 0, "(state)"}};
}

// The sensor at channel 1 gives 1 V for 2.5 bar.
Readings DecodeAnalogue(const std::string& raw) {
  CLumIoName response = TextOf(raw);
  CLumDouble channel(1), volts;
  if (volts.AdamVal(response, channel) == 0) {
    return {};
  }
  return {{"tank pressure", volts * 2.5, 3, "bar"}};
}

// NMEAPos takes a text without a number for 0 degrees; Val tells that there is one.
bool ReadAngle(const std::string& text, const std::string& hemisphere, CLumDouble& degrees) {
  CLumIoName position = TextOf(text), letter = TextOf(hemisphere);
  return degrees.Val(position, false) != 0 && degrees.NMEAPos(position, letter) != 0;
}

Readings DecodePosition(const std::string& raw) {
  std::istringstream sentence(raw);
  std::string fields[5];
  for (std::string& field : fields) {
    std::getline(sentence, field, ',');
  }
  CLumDouble latitude, longitude;
  if (!ReadAngle(fields[1], fields[2], latitude) || !ReadAngle(fields[3], fields[4], longitude)) {
    return {};
  }
  return {{"latitude", latitude, 6, "°"}, {"longitude", longitude, 6, "°"}};
}

Readings DecodeClock(const std::string& raw) {
  CLumIoName text = TextOf(raw);
  CLumDouble seconds;
  if (seconds.TimeConv(text) == 0) {
    return {};
  }
  return {{"time of day", seconds * 1000.0, 0, "ms since midnight"}};
}

Readings DecodeDate(const std::string& raw) {
  std::string text = raw;
  text.resize(16);  // What is missing is then no number.
  CLumIoName yy = TextOf(text.substr(0, 2)), mm = TextOf(text.substr(2, 2));
  CLumIoName dd = TextOf(text.substr(4, 2)), hhmmss = TextOf(text.substr(7));
  CLumDouble year, month, day, seconds, absolute;
  if (year.Val(yy, false) == 0 || month.Val(mm, false) == 0 || day.Val(dd, false) == 0 ||
      seconds.TimeConv(hhmmss) == 0) {
    return {};
  }
  CLumDouble msec = seconds * 1000.0;
  if (year.YyToCcyy(year) == 0 || absolute.CYMDMsecToMsec(year, month, day, msec) == 0) {
    return {};
  }
  return {{"absolute time", absolute, 0, "ms since 1970 UTC"}};
}

struct Device {
  const char* kind;
  Readings (*decode)(const std::string& raw);
  const char* expected;
};

const Device kDevices[] = {
    {"echo-sounder", DecodeEchoSounder, "at least 4 bytes in hexadecimal, blanks between"},
    {"inclinometer", DecodeInclinometer, "a CAN frame with at least 2 data bytes"},
    {"coolant", DecodeCoolant, "a CAN frame whose byte 0 is a temperature"},
    {"engine", DecodeEngine, "a J1939 message with at least 5 data bytes"},
    {"analogue", DecodeAnalogue, "a response with a reading of channel 1"},
    {"position", DecodePosition, "a sentence $..GLL,ddmm.mmm,N,dddmm.mmm,E"},
    {"clock", DecodeClock, "a time of day, hhmmss.ss"},
    {"date", DecodeDate, "a date and a time of day, yymmdd hhmmss.ss"},
};

// False when there are no readings to print.
bool Print(const std::string& kind, const Readings& readings) {
  for (const auto& [quantity, value, decimals, unit] : readings) {
    double number = 0.0;
    value.GetDouble(number);
    std::cout << std::left << std::setw(14) << kind << std::setw(21) << quantity << std::right
              << std::setw(14) << std::fixed << std::setprecision(decimals) << number << "  "
              << unit << "\n";
  }
  return !readings.empty();
}

// Prints what a line says; else returns what was expected of it.
std::string DecodeLine(const std::string& line) {
  std::istringstream words(line);
  std::string kind, raw, kinds;
  std::getline(words >> kind >> std::ws, raw);
  for (const Device& device : kDevices) {
    if (kind == device.kind) {
      return Print(kind, device.decode(raw)) ? "" : device.expected;
    }
    kinds += std::string(kinds.empty() ? "" : ", ") + device.kind;
  }
  return "a device: " + kinds;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string path = argc > 1 ? argv[1] : "examples/data/devices.txt";
  std::ifstream file(path);
  if (!file || file.peek() == std::ifstream::traits_type::eof()) {
    std::cerr << "decode_devices: cannot read \"" << path << "\", or it is empty\n";
    return EXIT_FAILURE;
  }
  std::cout << "DEVICE        QUANTITY                      VALUE  UNIT\n";
  bool isFine = true;
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    const std::string expected = line.empty() || line.front() == '#' ? "" : DecodeLine(line);
    if (!expected.empty()) {
      std::cerr << path << ":" << number << ": found '" << line << "', expected " << expected
                << "\n";
      isFine = false;
    }
  }
  return isFine ? EXIT_SUCCESS : EXIT_FAILURE;
}
