#include "tools/lumattr/TreeWalk.h"

#include "catalogue/AttributeNames.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {

CTreeWalk::CTreeWalk(const CAttributeMap& root, const CAttributeMap& sameShape) {
  m_levels.push_back({&root, &sameShape, 0, 0, 0, {}});
}

bool CTreeWalk::Next() {
  while (m_levels.back().nextChild >= m_levels.back().node->Count()) {
    if (m_levels.size() == 1) {
      return false;
    }
    m_path.resize(m_levels.back().pathLength);
    m_levels.pop_back();
  }
  Descend();
  return true;
}

void CTreeWalk::Descend() {
  Level& parent = m_levels.back();
  const int place = parent.nextChild++;
  const CAttributeMap& node = (*parent.node)[place];
  const CAttributeMap& other = (*parent.other)[place];
  const int occurrence = parent.seen[node.Mnemonic()]++;
  const std::size_t pathLength = m_path.size();
  if (m_levels.size() > 1) {
    m_path += KEY_DIVCHAR;
  }
  m_path += View(FormatStep({node.Mnemonic(), occurrence}));
  m_levels.push_back({&node, &other, occurrence, pathLength, 0, {}});
}

}  // namespace lum::tool
