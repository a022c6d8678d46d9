// The catalogue: that every constant has its text, and that the texts are there before any code
// runs.
#include "catalogue/AttributeNames.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <type_traits>
#include <utility>

#include "tests/TextPrinting.h"

// What the catalogue looked like before the constructors of any library had run.
#if defined(__linux__) && defined(LUM_CONSTINIT_TEXT)
namespace {

struct EarlySight {
  const wchar_t* characters;
  int length;
};
EarlySight g_early[3];

__attribute__((no_sanitize("address", "undefined"))) void LookEarly() {
  g_early[0] = {ATTR_ABOVECOLOR.GetString(), ATTR_ABOVECOLOR.GetLength()};
  g_early[1] = {ATTRIB_ORDERINFO.GetString(), ATTRIB_ORDERINFO.GetLength()};
  g_early[2] = {ATTR_ZPOSDATAINFO.GetString(), ATTR_ZPOSDATAINFO.GetLength()};
}

__attribute__((section(".preinit_array"), used)) void (*const g_lookEarly)() = &LookEarly;

}  // namespace
#endif

namespace {

// The constants whose text is not their name in mixed case.
constexpr std::pair<const wchar_t*, const wchar_t*> kExceptions[] = {
    {L"ATTRIB_LEVEL", L"@L"},
    {L"ATTRIB_MARK", L"@tr"},
    {L"ATTRIB_VERSION_KEY", L"AttrVersion"},
    {L"ATTR_ACTIVEPRODDTMLAYER", L"ActiveProductionDTMLayer"},
    {L"ATTR_CAMAREADATAID", L"CameraDataId"},
    {L"ATTR_CUBEANNOCOLTABLE", L"CubeSurfAnnoColorTable"},
    {L"ATTR_CUBEANNODSURFTYPE", L"CubeSurfAnnoDataType"},
    {L"ATTR_CUBEGPSLATENCYSDEV", L"GPSLatencySdev"},
    {L"ATTR_CUBEGYROSDEV", L"GYROSdev"},
    {L"ATTR_CUBEHEAVEPERCENERROR", L"SDEVDynHeave"},
    {L"ATTR_CUBEIMUOFFSET", L"SDEVOffset"},
    {L"ATTR_CUBENODECIANNOCOLTABLE", L"CubeNodeCIAnnoColorTable"},
    {L"ATTR_CUBENODECIANNOTYPE", L"CubeNodeCIAnnoDataType"},
    {L"ATTR_CUBENODECITYPE", L"CubeNodeCIDataType"},
    {L"ATTR_CUBENODEDEPANNOCOLTABLE", L"CubeNodeDepAnnoColorTable"},
    {L"ATTR_CUBENODEDEPANNODEPTYPE", L"CubeNodeDepAnnoDataType"},
    {L"ATTR_CUBENODEDEPTYPE", L"CubeNodeDepDataType"},
    {L"ATTR_CUBENODENUMANNOCOLTABLE", L"CubeNodeBNUMAnnoColorTable"},
    {L"ATTR_CUBENODENUMANNOTYPE", L"CubeNodeBNUMAnnoDataType"},
    {L"ATTR_CUBENODENUMTYPE", L"CubeNodeBNUMDataType"},
    {L"ATTR_CUBESDEVDYDRAFTERROR", L"SDEVDyDrafterror"},
    {L"ATTR_CUBESDEVFIXHEAVE", L"SDEVFixHeave"},
    {L"ATTR_CUBESDEVGPSOFFSET", L"SDEVGPSOffset"},
    {L"ATTR_CUBESDEVHEADING", L"SDEVHeading"},
    {L"ATTR_CUBESDEVPITCH", L"SDEVPitch"},
    {L"ATTR_CUBESDEVPITCHSTB", L"SDEVPitchStab"},
    {L"ATTR_CUBESDEVPLATLOAD", L"SDEVplatLoad"},
    {L"ATTR_CUBESDEVROLL", L"SDEVRoll"},
    {L"ATTR_CUBESDEVROLLPITCH", L"SDEVRollPitch"},
    {L"ATTR_CUBESDEVSPOGROUND", L"SDEVSPOGround"},
    {L"ATTR_CUBESDEVSVP", L"SDEVSVP"},
    {L"ATTR_CUBESDEVTIDEGUAGE", L"SDEVTideGuage"},
    {L"ATTR_CUBESDEVTXHEADLATENCY", L"SDEVTxHeadLatency"},
    {L"ATTR_CUBESDEVVRULATTENCY", L"SDEVVRULattency"},
    {L"ATTR_CUBESDEVVSPSS", L"SDEVSPSS"},
    {L"ATTR_CUBESDEVWATERLINE", L"SDEVWaterline"},
    {L"ATTR_CUBESURFTYPE", L"CubeSurfDataType"},
    {L"ATTR_CUBETIDEPREDICT", L"SDEVTidePredict"},
    {L"ATTR_DREDGE_REG_VALUE", L"RegValue"},
    {L"ATTR_DREDGE_USE_EMPTY_CELLS", L"UseEmptyCells"},
    {L"ATTR_ELLIPSEINTERVAL", L"TPEEllipseInterval"},
    {L"ATTR_ELTINDEX", L"ElementIndex"},
    {L"ATTR_IHOERRORCHECK", L"IHOError"},
    {L"ATTR_IHOORDER", L"IHOErrorStandard"},
    {L"ATTR_INTENSITYTHRESHOLD", L"IntensFilterThreshold"},
    {L"ATTR_MBEAMCALPROF", L"MbeamCalProfLayer"},
    {L"ATTR_NBR_OF_SEGMENTS", L"NumberOfSegments"},
    {L"ATTR_PANTILTPOS_DATAID", L"PanAndTiltPosDataId"},
    {L"ATTR_PANTILT_DATAID", L"PanAndTiltDataId"},
    {L"ATTR_RUNINLENGHT", L"RunInLineLenght"},
    {L"ATTR_SBF_DEPTH", L"SBDepthFilter"},
    {L"ATTR_SBF_DPTMAX", L"SBDepthMin"},
    {L"ATTR_SBF_DPTMIN", L"SBDepthMax"},
    {L"ATTR_SBF_GATE", L"SBGateFilter"},
    {L"ATTR_SBF_GATEVAL", L"SBGateVal"},
    {L"ATTR_SBF_SPIKE", L"SBSpikeFilter"},
    {L"ATTR_SBF_SPIKEGAMMA", L"SBSpikeGamma"},
    {L"ATTR_SBF_SPIKENOISE", L"SBSpikeNoise"},
    {L"ATTR_SHIFTX", L"Xshift"},
    {L"ATTR_SHIFTY", L"Yshift"},
    {L"ATTR_SHIFTZ", L"Zshift"},
    {L"ATTR_SHOW_ERRELLIPSOID", L"ShowErrorEllipsoid"},
    {L"ATTR_SHOW_ERRORBAR", L"ShowErrorAsBar"},
    {L"ATTR_SHOW_ONLT_IHO", L"ShowOnlyIHOErr"},
    {L"ATTR_SHOW_ONLY_LUM", L"ShowOnlyLUMErr"},
    {L"ATTR_SHUTALTSOURCE", L"ShuttleAltitudeSource"},
    {L"ATTR_SHUTCONMET", L"ShuttleControlMethod"},
    {L"ATTR_SLANTRANGECOR", L"SLCorrection"},
    {L"ATTR_SONARIMAGEDATA_DATAID", L"ADTS2SonarImageDataDataId"},
    {L"ATTR_TPE_ELLIPSOID_INT", L"TPEEllipseInterval"},
    {L"ATTR_WFSADTTRACKS_DATAID", L"ADTS2WFSADTTracksDataId"},
};

// The constant's name after its prefix, without underscores and in lower case.
std::wstring Reduced(std::wstring text) {
  std::erase(text, L'_');
  for (wchar_t& ch : text) {
    if (ch >= L'A' && ch <= L'Z') {
      ch = static_cast<wchar_t>(ch - L'A' + L'a');
    }
  }
  return text;
}

std::wstring WithoutPrefix(const std::wstring& constant) {
  return constant.substr(constant.find(L'_') + 1);
}

TEST(AttributeNames, Has608AttributesAndFourKeysOfTheTrees) {
  int attributes = 0;
  int keys = 0;
  for (const AttributeName& name : AttributeNames()) {
    const std::wstring constant = name.constant;
    attributes += constant.starts_with(L"ATTR_") ? 1 : 0;
    keys += constant.starts_with(L"ATTRIB_") ? 1 : 0;
  }
  EXPECT_EQ(attributes, 608);
  EXPECT_EQ(keys, 4);
  EXPECT_EQ(AttributeNames().size(), 612u);
}

TEST(AttributeNames, StandInAlphabeticalOrderOnceEach) {
  std::wstring before;
  for (const AttributeName& name : AttributeNames()) {
    EXPECT_LT(before, name.constant);
    before = name.constant;
  }
}

struct ExportedName {
  const CString& constant;
  const wchar_t* name;
  const wchar_t* text;
};

#define LUM_ATTRIBUTE_NAME(constant, text) {constant, L"" #constant, L"" text},
const ExportedName kExportedNames[] = {
#include "catalogue/AttributeNames.def"
};
#undef LUM_ATTRIBUTE_NAME

TEST(AttributeNames, EveryConstantHoldsTheTextOfItsEntry) {
  std::map<std::wstring, std::wstring> listed;
  for (const AttributeName& name : AttributeNames()) {
    listed[name.constant] = name.mnemonic;
  }
  for (const ExportedName& exported : kExportedNames) {
    EXPECT_EQ(exported.constant, exported.text);
    EXPECT_EQ(listed[exported.name], exported.text);
  }
}

TEST(AttributeNames, TextsAreTheNamesInMixedCaseButFor71) {
  const std::map<std::wstring, std::wstring> exceptions(std::begin(kExceptions),
                                                        std::end(kExceptions));
  ASSERT_EQ(exceptions.size(), 71u);
  int following = 0;
  for (const AttributeName& name : AttributeNames()) {
    const auto exception = exceptions.find(name.constant);
    const bool follows = Reduced(WithoutPrefix(name.constant)) == Reduced(name.mnemonic);
    EXPECT_EQ(follows, exception == exceptions.end()) << testing::PrintToString(name.constant);
    if (exception != exceptions.end()) {
      EXPECT_EQ(name.mnemonic, exception->second);
    }
    following += follows ? 1 : 0;
  }
  EXPECT_EQ(following, 541);
}

// The texts are keys in stored files: their spelling, case included, never changes. This is the
// 64-bit FNV-1a hash of all lines "constant text".
TEST(AttributeNames, NoTextEverChanges) {
  std::uint64_t hash = 0xCBF29CE484222325u;
  for (const AttributeName& name : AttributeNames()) {
    for (wchar_t ch : std::wstring(name.constant) + L' ' + name.mnemonic + L'\n') {
      hash = (hash ^ static_cast<std::uint64_t>(ch)) * 0x100000001B3u;
    }
  }
  EXPECT_EQ(hash, 0x4DF95A6D1D7E65E9u);
}

TEST(AttributeNames, TwoPairsShareATextOnPurpose) {
  EXPECT_EQ(ATTR_ELLIPSEINTERVAL, ATTR_TPE_ELLIPSOID_INT);
  EXPECT_EQ(ATTR_TIDE_STATIONLAYER, ATTR_TIDESTATIONLAYER);
  std::set<std::wstring> texts;
  for (const AttributeName& name : AttributeNames()) {
    texts.insert(name.mnemonic);
  }
  EXPECT_EQ(texts.size(), 610u);
}

TEST(AttributeNames, MinimumAndMaximumOfTheSingleBeamFilterAreSwapped) {
  EXPECT_EQ(ATTR_SBF_DPTMIN, CString(L"SBDepthMax"));
  EXPECT_EQ(ATTR_SBF_DPTMAX, CString(L"SBDepthMin"));
}

TEST(AttributeNames, KeysOfTheTrees) {
  EXPECT_EQ(ATTRIB_MARK, CString(L"@tr"));
  EXPECT_EQ(ATTRIB_VERSION_KEY, CString(L"AttrVersion"));
  EXPECT_EQ(ATTRIB_ORDERINFO, CString(L"OrderInfo"));
  EXPECT_EQ(ATTRIB_LEVEL, CString(L"@L"));
}

TEST(AttributeNames, OtherConstants) {
  EXPECT_EQ(KEY_DIVCHAR, L'.');
  EXPECT_EQ(MENUBASE_CMDID, 44000u);
  EXPECT_EQ(MENURANGE_CMDID, 999u);
  static_assert(std::is_same_v<decltype(KEY_DIVCHAR), const wchar_t>);
  static_assert(std::is_same_v<decltype(MENUBASE_CMDID), const unsigned int>);
}

#if defined(__linux__) && defined(LUM_CONSTINIT_TEXT)
TEST(AttributeNames, AreThereBeforeAnyCodeOfAModuleRuns) {
  EXPECT_EQ(CString(g_early[0].characters, g_early[0].length), CString(L"AboveColor"));
  EXPECT_EQ(CString(g_early[1].characters, g_early[1].length), CString(L"OrderInfo"));
  EXPECT_EQ(CString(g_early[2].characters, g_early[2].length), CString(L"ZPosDataInfo"));
}
#endif

}  // namespace
