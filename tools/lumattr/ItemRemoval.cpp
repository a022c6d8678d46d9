#include "tools/lumattr/ItemRemoval.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "tools/lumattr/ItemChange.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

struct Renaming {
  CString key;
  CString newKey;
  int occurrence;
};

struct RemovalPlan {
  std::vector<CString> removed;
  std::vector<Renaming> renamed;
  std::vector<SectionItem> expected;  ///< What the section must hold afterwards.
};

bool IsLaterSibling(const AttributePath& path, const AttributePath& removed) {
  const std::size_t last = removed.size() - 1;
  return path.size() > last && std::equal(removed.begin(), removed.end() - 1, path.begin()) &&
         path[last].name == removed[last].name && path[last].occurrence > removed[last].occurrence;
}

void PlanItem(const SectionItem& item, const LoadedSection& loaded, RemovalPlan& plan) {
  std::optional<AttributePath> path;
  if (item.role == ItemRole::Attribute) {
    path = ReadPath(item.dottedPath);
  }
  if (path && BeginsWith(*path, loaded.path)) {
    plan.removed.push_back(item.key);
    return;
  }
  plan.expected.push_back(item);
  if (path && IsLaterSibling(*path, loaded.path)) {
    const int occurrence = --(*path)[loaded.path.size() - 1].occurrence;
    plan.expected.back().key = KeyOfPath(*path, loaded.items.version);
    plan.renamed.push_back({item.key, plan.expected.back().key, occurrence});
  }
}

RemovalPlan PlanRemoval(const LoadedSection& loaded) {
  RemovalPlan plan;
  for (const SectionItem& item : loaded.items.items) {
    PlanItem(item, loaded, plan);
  }
  // Each new key must be free when its turn comes.
  std::stable_sort(
      plan.renamed.begin(), plan.renamed.end(),
      [](const Renaming& a, const Renaming& b) { return a.occurrence < b.occurrence; });
  return plan;
}

void CarryOut(const RemovalPlan& plan, LoadedSection& loaded) {
  for (const CString& key : plan.removed) {
    loaded.file.RemoveItem(loaded.section, key);
  }
  for (const Renaming& item : plan.renamed) {
    if (!loaded.file.RenameItem(loaded.section, item.key, item.newKey)) {
      throw ToolError("cannot rename the item " + Quoted(item.key) + " to " + Quoted(item.newKey));
    }
  }
}

}  // namespace

RemovalCount RemoveAttribute(LoadedSection& loaded) {
  RefuseVersion(loaded);
  const RemovalPlan plan = PlanRemoval(loaded);
  if (plan.removed.empty() && plan.renamed.empty()) {
    ThrowMissing(loaded);
  }
  CarryOut(plan, loaded);
  ProveItems(loaded, plan.expected);
  return {static_cast<int>(plan.removed.size()), static_cast<int>(plan.renamed.size())};
}

}  // namespace lum::tool
