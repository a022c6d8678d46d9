// Qt: trees of QVariantMap and of QVariantHash, stored as JSON, and QSettings' files. Copies of
// these share their content, so deep copies are left out.
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>
#include <QVariant>
#include <filesystem>

#include "benchmarks/TreeContender.h"
#include "benchmarks/TreeFamilies.h"

namespace lum::bench {

namespace {

QString ToText(const std::string& text) { return QString::fromStdString(text); }

QVariant ToVariant(const std::string& value) { return ToText(value); }
template <typename Plain>
QVariant ToVariant(Plain value) {
  return {value};
}

struct CQtText {
  int size() const { return text.size(); }
  int back() const { return text.back().unicode(); }

  QString text;
};

void ReadValue(const QVariant& variant, bool& value) { value = variant.toBool(); }
void ReadValue(const QVariant& variant, int& value) { value = variant.toInt(); }
void ReadValue(const QVariant& variant, double& value) { value = variant.toDouble(); }
void ReadValue(const QVariant& variant, CQtText& value) { value.text = variant.toString(); }

constexpr const char* NameOfMap(const QVariantMap*) { return "Qt QVariantMap"; }
constexpr const char* NameOfMap(const QVariantHash*) { return "Qt QVariantHash"; }

QJsonObject ToJson(const QVariantMap& map) { return QJsonObject::fromVariantMap(map); }
QJsonObject ToJson(const QVariantHash& map) { return QJsonObject::fromVariantHash(map); }
void FromJson(const QJsonObject& json, QVariantMap& map) { map = json.toVariantMap(); }
void FromJson(const QJsonObject& json, QVariantHash& map) { map = json.toVariantHash(); }

/// The map in a variant, without a copy.
template <typename Map>
const Map& MapIn(const QVariant& variant) {
  return *static_cast<const Map*>(variant.constData());
}

template <typename Map>
class CVariantTree {
 public:
  using Tree = Map;
  static constexpr const char* kName = NameOfMap(static_cast<const Map*>(nullptr));

  explicit CVariantTree(const CTreeData& data) : m_data(data), m_names(data, ToText) {}

  /// From the leaves up: a map in a variant cannot be changed in its place.
  Tree Build() const {
    Tree root, group, part;
    QVariantList list;
    for (int i = 0; i < m_data.count; ++i) {
      const QVariant variant = WithValue(i, [](const auto& value) { return ToVariant(value); });
      if (m_data.shape == Shape::OneName) {
        list.append(variant);
      }
      Tree& node = m_data.HasLevels() ? part : root;
      node.insert(m_names.leaves[m_data.LeafOf(i)], variant);
      if (m_data.HasLevels() && (i + 1) % CTreeData::kLeaves == 0) {
        group.insert(m_names.parts[CTreeData::PartOf(i)], std::exchange(part, {}));
      }
      if (m_data.HasLevels() && (i + 1) % (CTreeData::kLeaves * CTreeData::kParts) == 0) {
        root.insert(m_names.groups[CTreeData::GroupOf(i)], std::exchange(group, {}));
      }
    }
    if (m_data.shape == Shape::OneName) {
      root.insert(m_names.leaves[0], list);
    }
    return root;
  }

  bool Save(const Tree& tree, const std::string& path) const {
    const QByteArray text = QJsonDocument(ToJson(tree)).toJson(QJsonDocument::Compact);
    QFile file(ToText(path));
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
  }

  Tree Load(const std::string& path) const {
    QFile file(ToText(path));
    Tree tree;
    if (file.open(QIODevice::ReadOnly)) {
      const QJsonObject json = QJsonDocument::fromJson(file.readAll()).object();
      // Groups below the root are of this kind whatever the root is.
      m_holdsMaps = true;
      FromJson(json, tree);
    }
    return tree;
  }

  CTreeSum Read(const Tree& tree) const {
    if (m_data.HasLevels()) {
      return m_holdsMaps ? ReadLevels<QVariantMap>(tree) : ReadLevels<Map>(tree);
    }
    return SumOf<CQtText>(m_data, [&](int i, auto& value) {
      const QVariant& child = *tree.constFind(m_names.leaves[m_data.LeafOf(i)]);
      ReadValue(m_data.shape == Shape::OneName ? MapIn<QVariantList>(child).at(i) : child, value);
    });
  }

 private:
  template <typename Inner>
  CTreeSum ReadLevels(const Tree& tree) const {
    return SumOf<CQtText>(m_data, [&](int i, auto& value) {
      const QVariant& group = *tree.constFind(m_names.groups[CTreeData::GroupOf(i)]);
      const QVariant& part = *MapIn<Inner>(group).constFind(m_names.parts[CTreeData::PartOf(i)]);
      ReadValue(*MapIn<Inner>(part).constFind(m_names.leaves[m_data.LeafOf(i)]), value);
    });
  }

  CTreeData m_data;
  CNames<QString> m_names;
  mutable bool m_holdsMaps = false;
};

/// A QSettings is its file: saving sets all values and writes the file, of a name that was not used
/// before, since Qt keeps what it read of a path.
class CSettingsTree {
 public:
  using Tree = std::shared_ptr<QSettings>;
  static constexpr const char* kName = "Qt QSettings";

  explicit CSettingsTree(const CTreeData& data) : m_data(data) {
    for (const std::string& path : PathsOf(data, '/')) {
      m_paths.push_back(ToText(path));
    }
  }

  Tree Build() const { return nullptr; }

  bool Save(const Tree&, const std::string& path) const {
    std::filesystem::remove(NumberedPath(path));
    ++m_number;
    const Tree tree = Open(path);
    for (int i = 0; i < m_data.count; ++i) {
      WithValue(i, [&](const auto& value) {
        tree->setValue(m_paths[static_cast<std::size_t>(i)], ToVariant(value));
      });
    }
    tree->sync();
    return tree->status() == QSettings::NoError;
  }

  Tree Load(const std::string& path) const {
    const std::string before = NumberedPath(path);
    ++m_number;
    std::filesystem::rename(before, NumberedPath(path));
    return Open(path);
  }

  CTreeSum Read(const Tree& tree) const {
    return SumOf<CQtText>(m_data, [&](int i, auto& value) {
      ReadValue(tree->value(m_paths[static_cast<std::size_t>(i)]), value);
    });
  }

 private:
  std::string NumberedPath(const std::string& path) const {
    return path + ".qt" + std::to_string(m_number);
  }
  Tree Open(const std::string& path) const {
    return std::make_shared<QSettings>(ToText(NumberedPath(path)), QSettings::IniFormat);
  }

  CTreeData m_data;
  std::vector<QString> m_paths;
  /// Of the one file that there is, whichever object made it.
  static inline int m_number = 0;
};

template <typename Map>
Map BuildSiblings(int siblings) {
  Map tree;
  for (int i = 0; i < siblings; ++i) {
    tree.insert(ToText("Sensor" + std::to_string(i)), DoubleOf(i));
  }
  return tree;
}

template <typename Map>
void AddVariants() {
  using Contender = CVariantTree<Map>;
  AddTreeBuilder<Contender>();
  AddFileText<Contender>("", Shape::Levels, kAttributes);
  AddFileText<Contender>(kOneName, Shape::OneName, kAttributes);
  AddCompare<Contender>(Contender::kName, std::equal_to<Map>());
  AddLookup<QString>(
      Contender::kName, kAttributes, BuildSiblings<Map>, ToText,
      [](const Map& tree, const QString& name) { return tree.constFind(name)->toDouble(); });
}

}  // namespace

void AddQtTrees() {
  AddVariants<QVariantMap>();
  AddVariants<QVariantHash>();
  AddFileText<CVariantTree<QVariantMap>>(kDistinctNames, Shape::DistinctNames, kAttributes);
  AddFileText<CSettingsTree>("", Shape::Levels, kAttributes);
  AddFileText<CSettingsTree>(kDistinctNames, Shape::DistinctNames, kAttributes);
}

}  // namespace lum::bench
