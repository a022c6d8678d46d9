// GLib key files: groups of keys, with a group for each part of the tree. A key stands once in its
// group, so siblings of one name are left out.
#include <glib.h>

#include <memory>

#include "benchmarks/TreeContender.h"
#include "benchmarks/TreeFamilies.h"

namespace lum::bench {

namespace {

struct CGlibText {
  std::size_t size() const { return std::char_traits<char>::length(text.get()); }
  char back() const { return text.get()[size() - 1]; }

  std::unique_ptr<char, decltype(&g_free)> text{nullptr, g_free};
};

struct CPlace {
  GKeyFile* file;
  const char* group;
  const char* key;
};

void SetValue(const CPlace& at, bool value) {
  g_key_file_set_boolean(at.file, at.group, at.key, value ? TRUE : FALSE);
}
void SetValue(const CPlace& at, int value) {
  g_key_file_set_integer(at.file, at.group, at.key, value);
}
void SetValue(const CPlace& at, double value) {
  g_key_file_set_double(at.file, at.group, at.key, value);
}
void SetValue(const CPlace& at, const std::string& value) {
  g_key_file_set_string(at.file, at.group, at.key, value.c_str());
}

void GetValue(const CPlace& at, bool& value) {
  value = g_key_file_get_boolean(at.file, at.group, at.key, nullptr) != FALSE;
}
void GetValue(const CPlace& at, int& value) {
  value = g_key_file_get_integer(at.file, at.group, at.key, nullptr);
}
void GetValue(const CPlace& at, double& value) {
  value = g_key_file_get_double(at.file, at.group, at.key, nullptr);
}
void GetValue(const CPlace& at, CGlibText& value) {
  value.text.reset(g_key_file_get_string(at.file, at.group, at.key, nullptr));
}

class CGlibTree {
 public:
  using Tree = std::shared_ptr<GKeyFile>;
  static constexpr const char* kName = "GLib key file";

  explicit CGlibTree(const CTreeData& data) : m_data(data), m_groups(PartsOf(data)) {}

  Tree Build() const {
    Tree tree(g_key_file_new(), g_key_file_free);
    for (int i = 0; i < m_data.count; ++i) {
      WithValue(i, [&](const auto& value) { SetValue(PlaceOf(tree, i), value); });
    }
    return tree;
  }

  /// The setters make the texts, so they are part of it.
  bool Save(const Tree&, const std::string& path) const {
    return g_key_file_save_to_file(Build().get(), path.c_str(), nullptr) != FALSE;
  }

  Tree Load(const std::string& path) const {
    Tree tree(g_key_file_new(), g_key_file_free);
    g_key_file_load_from_file(tree.get(), path.c_str(), G_KEY_FILE_NONE, nullptr);
    return tree;
  }

  CTreeSum Read(const Tree& tree) const {
    return SumOf<CGlibText>(m_data, [&](int i, auto& value) { GetValue(PlaceOf(tree, i), value); });
  }

 private:
  CPlace PlaceOf(const Tree& tree, int i) const {
    return {tree.get(), m_groups[static_cast<std::size_t>(i / CTreeData::kLeaves)].c_str(),
            m_data.leaves[m_data.LeafOf(i)].c_str()};
  }

  CTreeData m_data;
  std::vector<std::string> m_groups;
};

std::shared_ptr<GKeyFile> BuildSiblings(int siblings) {
  std::shared_ptr<GKeyFile> tree(g_key_file_new(), g_key_file_free);
  for (int i = 0; i < siblings; ++i) {
    g_key_file_set_double(tree.get(), "Survey", ("Sensor" + std::to_string(i)).c_str(),
                          DoubleOf(i));
  }
  return tree;
}

}  // namespace

void AddGlibTree() {
  AddTreeBuilder<CGlibTree>();
  AddFileText<CGlibTree>("", Shape::Levels, kAttributes);
  AddFileText<CGlibTree>(kDistinctNames, Shape::DistinctNames, kAttributes);
  AddLookup<std::string>(
      CGlibTree::kName, kAttributes, BuildSiblings, [](const std::string& name) { return name; },
      [](const std::shared_ptr<GKeyFile>& tree, const std::string& name) {
        return g_key_file_get_double(tree.get(), "Survey", name.c_str(), nullptr);
      });
}

}  // namespace lum::bench
