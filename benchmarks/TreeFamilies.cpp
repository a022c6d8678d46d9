// Registers the contenders whose libraries were found.
#include "benchmarks/TreeFamilies.h"

#include "benchmarks/Context.h"

namespace lum::bench {

void AddTrees() {
  AddLimitTree();
  AddOurTree();
#ifdef HAS_RAPIDJSON
  AddRapidJsonTree();
#endif
#ifdef HAS_NLOHMANN_JSON
  AddNlohmannTrees();
#endif
#ifdef HAS_BOOST
  AddBoostTree();
#endif
#ifdef HAS_GLIB
  AddGlibTree();
#endif
#ifdef HAS_QT
  AddQtTrees();
#endif
#ifdef HAS_TOMLPLUSPLUS
  AddTomlTree();
#endif
#ifdef HAS_POCO
  AddPocoTree();
#endif
#ifdef HAS_SIMPLEINI
  AddSimpleIniTree();
#endif
}

#if !defined(HAS_RAPIDJSON)
#define HAS_RAPIDJSON "absent"
#endif
#if !defined(HAS_NLOHMANN_JSON)
#define HAS_NLOHMANN_JSON "absent"
#endif
#if !defined(HAS_BOOST)
#define HAS_BOOST "absent"
#endif
#if !defined(HAS_GLIB)
#define HAS_GLIB "absent"
#endif
#if !defined(HAS_QT)
#define HAS_QT "absent"
#endif
#if !defined(HAS_TOMLPLUSPLUS)
#define HAS_TOMLPLUSPLUS "absent"
#endif
#if !defined(HAS_POCO)
#define HAS_POCO "absent"
#endif
#if !defined(HAS_SIMPLEINI)
#define HAS_SIMPLEINI "absent"
#endif

void TellTreePeers() {
  TellPeer("RapidJSON", HAS_RAPIDJSON);
  TellPeer("nlohmann json", HAS_NLOHMANN_JSON);
  TellPeer("Boost", HAS_BOOST);
  TellPeer("GLib", HAS_GLIB);
  TellPeer("Qt", HAS_QT);
  TellPeer("toml++", HAS_TOMLPLUSPLUS);
  TellPeer("Poco", HAS_POCO);
  TellPeer("SimpleIni", HAS_SIMPLEINI);
}

}  // namespace lum::bench
