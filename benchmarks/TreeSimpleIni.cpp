// SimpleIni: files of sections with keys, with a section for each part of the tree, whose setters
// and getters convert. It reads only the first of several values of a key as a number, so siblings
// of one name are left out.
// The header brings its functions along; texts stay as they are, which is its fastest way.
#define SI_IMPLEMENTATION
#define SI_NO_CONVERSION
#include <SimpleIni.h>

#include <memory>
#include <string_view>

#include "benchmarks/TreeContender.h"
#include "benchmarks/TreeFamilies.h"

namespace lum::bench {

namespace {

// Names differ by case, as in the library.
using CIni = CSimpleIniCaseA;

struct CPlace {
  const char* section;
  const char* key;
};

void SetValue(CIni& ini, const CPlace& at, bool value) {
  ini.SetBoolValue(at.section, at.key, value);
}
void SetValue(CIni& ini, const CPlace& at, int value) {
  ini.SetLongValue(at.section, at.key, value);
}
void SetValue(CIni& ini, const CPlace& at, double value) {
  ini.SetDoubleValue(at.section, at.key, value);
}
void SetValue(CIni& ini, const CPlace& at, const std::string& value) {
  ini.SetValue(at.section, at.key, value.c_str());
}

void GetValue(const CIni& ini, const CPlace& at, bool& value) {
  value = ini.GetBoolValue(at.section, at.key);
}
void GetValue(const CIni& ini, const CPlace& at, int& value) {
  value = static_cast<int>(ini.GetLongValue(at.section, at.key));
}
void GetValue(const CIni& ini, const CPlace& at, double& value) {
  value = ini.GetDoubleValue(at.section, at.key);
}
void GetValue(const CIni& ini, const CPlace& at, std::string_view& value) {
  value = ini.GetValue(at.section, at.key, "");
}

class CSimpleIniTree {
 public:
  using Tree = std::shared_ptr<CIni>;
  static constexpr const char* kName = "SimpleIni";

  explicit CSimpleIniTree(const CTreeData& data) : m_data(data), m_sections(PartsOf(data)) {}

  Tree Build() const {
    auto tree = std::make_shared<CIni>();
    for (int i = 0; i < m_data.count; ++i) {
      WithValue(i, [&](const auto& value) { SetValue(*tree, PlaceOf(i), value); });
    }
    return tree;
  }

  /// The setters make the texts, so they are part of it.
  bool Save(const Tree&, const std::string& path) const {
    return Build()->SaveFile(path.c_str(), false) >= 0;
  }

  Tree Load(const std::string& path) const {
    auto tree = std::make_shared<CIni>();
    tree->LoadFile(path.c_str());
    return tree;
  }

  CTreeSum Read(const Tree& tree) const {
    return SumOf<std::string_view>(m_data,
                                   [&](int i, auto& value) { GetValue(*tree, PlaceOf(i), value); });
  }

 private:
  CPlace PlaceOf(int i) const {
    return {m_sections[static_cast<std::size_t>(i / CTreeData::kLeaves)].c_str(),
            m_data.leaves[m_data.LeafOf(i)].c_str()};
  }

  CTreeData m_data;
  std::vector<std::string> m_sections;
};

std::shared_ptr<CIni> BuildSiblings(int siblings) {
  auto tree = std::make_shared<CIni>();
  for (int i = 0; i < siblings; ++i) {
    tree->SetDoubleValue("Survey", ("Sensor" + std::to_string(i)).c_str(), DoubleOf(i));
  }
  return tree;
}

}  // namespace

void AddSimpleIniTree() {
  AddTreeBuilder<CSimpleIniTree>();
  AddFileText<CSimpleIniTree>("", Shape::Levels, kAttributes);
  AddFileText<CSimpleIniTree>(kDistinctNames, Shape::DistinctNames, kAttributes);
  AddLookup<std::string>(
      CSimpleIniTree::kName, kAttributes, BuildSiblings,
      [](const std::string& name) { return name; },
      [](const std::shared_ptr<CIni>& tree, const std::string& name) {
        return tree->GetDoubleValue("Survey", name.c_str());
      });
}

}  // namespace lum::bench
