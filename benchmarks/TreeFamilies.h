// The families of contenders, each in a source of its own that is built where its library is found.
#pragma once

namespace lum::bench {

void AddOurTree();
void AddLimitTree();
void AddDefinitions();
void AddBoostTree();
void AddGlibTree();
void AddQtTrees();
void AddNlohmannTrees();
void AddRapidJsonTree();
void AddTomlTree();
void AddPocoTree();
void AddSimpleIniTree();

/// Registers what was built.
void AddTrees();

/// Puts the peers' versions into the report.
void TellTreePeers();

}  // namespace lum::bench
