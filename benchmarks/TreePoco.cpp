// Poco's configurations in files of properties: a flat, sorted map of paths to texts, whose setters
// and getters convert. A path stands once, so siblings of one name are left out.
#include <Poco/AutoPtr.h>
#include <Poco/Util/PropertyFileConfiguration.h>

#include "benchmarks/TreeContender.h"
#include "benchmarks/TreeFamilies.h"

namespace lum::bench {

namespace {

using Poco::Util::PropertyFileConfiguration;
using CConfiguration = Poco::AutoPtr<PropertyFileConfiguration>;

CConfiguration NewConfiguration() { return {new PropertyFileConfiguration()}; }

void SetValue(PropertyFileConfiguration& at, const std::string& path, bool value) {
  at.setBool(path, value);
}
void SetValue(PropertyFileConfiguration& at, const std::string& path, int value) {
  at.setInt(path, value);
}
void SetValue(PropertyFileConfiguration& at, const std::string& path, double value) {
  at.setDouble(path, value);
}
void SetValue(PropertyFileConfiguration& at, const std::string& path, const std::string& value) {
  at.setString(path, value);
}

void GetValue(const PropertyFileConfiguration& at, const std::string& path, bool& value) {
  value = at.getBool(path);
}
void GetValue(const PropertyFileConfiguration& at, const std::string& path, int& value) {
  value = at.getInt(path);
}
void GetValue(const PropertyFileConfiguration& at, const std::string& path, double& value) {
  value = at.getDouble(path);
}
void GetValue(const PropertyFileConfiguration& at, const std::string& path, std::string& value) {
  value = at.getString(path);
}

class CPocoTree {
 public:
  using Tree = CConfiguration;
  static constexpr const char* kName = "Poco";

  explicit CPocoTree(const CTreeData& data) : m_data(data), m_paths(PathsOf(data, '.')) {}

  Tree Build() const {
    Tree tree = NewConfiguration();
    for (int i = 0; i < m_data.count; ++i) {
      WithValue(i, [&](const auto& value) { SetValue(*tree, PathOf(i), value); });
    }
    return tree;
  }

  /// The setters make the texts, so they are part of it.
  bool Save(const Tree&, const std::string& path) const {
    Build()->save(path);
    return true;
  }

  Tree Load(const std::string& path) const {
    Tree tree = NewConfiguration();
    tree->load(path);
    return tree;
  }

  CTreeSum Read(const Tree& tree) const {
    return SumOf<std::string>(m_data,
                              [&](int i, auto& value) { GetValue(*tree, PathOf(i), value); });
  }

 private:
  const std::string& PathOf(int i) const { return m_paths[static_cast<std::size_t>(i)]; }

  CTreeData m_data;
  std::vector<std::string> m_paths;
};

CConfiguration BuildSiblings(int siblings) {
  CConfiguration tree = NewConfiguration();
  for (int i = 0; i < siblings; ++i) {
    tree->setDouble("Sensor" + std::to_string(i), DoubleOf(i));
  }
  return tree;
}

}  // namespace

void AddPocoTree() {
  AddTreeBuilder<CPocoTree>();
  AddFileText<CPocoTree>("", Shape::Levels, kAttributes);
  AddFileText<CPocoTree>(kDistinctNames, Shape::DistinctNames, kAttributes);
  AddLookup<std::string>(
      CPocoTree::kName, kAttributes, BuildSiblings, [](const std::string& name) { return name; },
      [](const CConfiguration& tree, const std::string& name) { return tree->getDouble(name); });
}

}  // namespace lum::bench
