// RapidJSON: documents whose objects are lists that a look-up searches from the first name on:
// reading 100,000 names of one parent takes quadratic time and is left out.
#define RAPIDJSON_HAS_STDSTRING 1
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <string_view>

#include "benchmarks/TreeContender.h"
#include "benchmarks/TreeFamilies.h"

namespace lum::bench {

namespace {

using rapidjson::Document;
using JsonValue = rapidjson::Value;

std::string Same(const std::string& text) { return text; }

JsonValue Text(const std::string& text, Document& document) {
  return {text.c_str(), static_cast<rapidjson::SizeType>(text.size()), document.GetAllocator()};
}

JsonValue ToValue(const std::string& value, Document& document) { return Text(value, document); }
template <typename Plain>
JsonValue ToValue(Plain value, Document&) {
  return JsonValue(value);
}

JsonValue& Append(JsonValue& node, const std::string& name, JsonValue value, Document& document) {
  node.AddMember(Text(name, document), value, document.GetAllocator());
  return (node.MemberEnd() - 1)->value;
}

void ReadValue(const JsonValue& node, bool& value) { value = node.GetBool(); }
void ReadValue(const JsonValue& node, int& value) { value = node.GetInt(); }
void ReadValue(const JsonValue& node, double& value) { value = node.GetDouble(); }
void ReadValue(const JsonValue& node, std::string_view& value) {
  value = {node.GetString(), node.GetStringLength()};
}

class CRapidJsonTree {
 public:
  using Tree = Document;
  static constexpr const char* kName = "RapidJSON";

  explicit CRapidJsonTree(const CTreeData& data) : m_data(data), m_names(data, Same) {}

  Tree Build() const {
    Tree tree(rapidjson::kObjectType);
    JsonValue* root = &tree;
    if (m_data.shape == Shape::OneName) {
      root = &Append(tree, m_names.leaves[0], JsonValue(rapidjson::kArrayType), tree);
    }
    BuildBelow(
        *root, m_data, m_names,
        [&](JsonValue& node, const std::string& name) -> JsonValue& {
          return Append(node, name, JsonValue(rapidjson::kObjectType), tree);
        },
        [&](JsonValue& node, int i) {
          WithValue(i, [&](const auto& value) {
            if (node.IsArray()) {
              node.PushBack(ToValue(value, tree), tree.GetAllocator());
            } else {
              Append(node, m_names.leaves[m_data.LeafOf(i)], ToValue(value, tree), tree);
            }
          });
        });
    return tree;
  }

  bool Save(const Tree& tree, const std::string& path) const {
    rapidjson::StringBuffer text;
    rapidjson::Writer<rapidjson::StringBuffer> writer(text);
    return tree.Accept(writer) && WriteFile(path, {text.GetString(), text.GetSize()});
  }

  Tree Load(const std::string& path) const {
    Tree tree;
    // Other contenders read the nearest number too; without the flag the last bit may be another.
    tree.Parse<rapidjson::kParseFullPrecisionFlag>(ReadFile(path).c_str());
    return tree;
  }

  CTreeSum Read(const Tree& tree) const {
    return SumOf<std::string_view>(m_data, [&](int i, auto& value) {
      const JsonValue* node = &tree;
      if (m_data.HasLevels()) {
        node = &(*node)[m_names.groups[m_data.GroupOf(i)]][m_names.parts[m_data.PartOf(i)]];
      }
      node = &(*node)[m_names.leaves[m_data.LeafOf(i)]];
      ReadValue(node->IsArray() ? (*node)[static_cast<rapidjson::SizeType>(i)] : *node, value);
    });
  }

  static Tree Copy(const Tree& tree) {
    Tree copy;
    copy.CopyFrom(tree, copy.GetAllocator());
    return copy;
  }

 private:
  CTreeData m_data;
  CNames<std::string> m_names;
};

Document BuildSiblings(int siblings) {
  Document tree(rapidjson::kObjectType);
  for (int i = 0; i < siblings; ++i) {
    Append(tree, "Sensor" + std::to_string(i), JsonValue(DoubleOf(i)), tree);
  }
  return tree;
}

}  // namespace

void AddRapidJsonTree() {
  AddTreeBuilder<CRapidJsonTree>();
  AddFileText<CRapidJsonTree>("", Shape::Levels, kAttributes);
  AddFileText<CRapidJsonTree>(kOneName, Shape::OneName, kAttributes);
  AddDeepCopy<CRapidJsonTree>();
  AddCompare<CRapidJsonTree>(
      CRapidJsonTree::kName,
      [](const Document& first, const Document& second) { return first == second; });
  AddLookup<std::string>(
      CRapidJsonTree::kName, kLinearLookups, BuildSiblings, Same,
      [](const Document& tree, const std::string& name) { return tree[name].GetDouble(); });
}

}  // namespace lum::bench
