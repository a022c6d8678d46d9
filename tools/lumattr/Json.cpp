#include "tools/lumattr/Json.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "tools/lumattr/Text.h"

namespace lum::tool {

struct CJson::Node {
  explicit Node(nlohmann::ordered_json value) : json(std::move(value)) {}

  nlohmann::ordered_json json;
};

namespace {

/// Escapes the control characters beyond ASCII's first, U+007F to U+009F, which JSON need not.
std::string WithoutControls(const std::string& json) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string safe;
  safe.reserve(json.size());
  for (std::size_t place = 0; place < json.size(); ++place) {
    // In UTF-8 those from U+0080 on are their own number behind 0xC2.
    const bool isOfTwo = json[place] == '\xC2' && place + 1 < json.size();
    const auto code = static_cast<unsigned char>(json[place + (isOfTwo ? 1 : 0)]);
    if (code < 0x7F || code > 0x9F || (code >= 0x80 && !isOfTwo)) {
      safe += json[place];
      continue;
    }
    safe.append("\\u00").append(1, kDigits[code / 16U]).append(1, kDigits[code % 16U]);
    place += isOfTwo ? 1 : 0;
  }
  return safe;
}

}  // namespace

CJson::CJson() : m_node(std::make_unique<Node>(nullptr)) {}
CJson::CJson(bool value) : m_node(std::make_unique<Node>(value)) {}
CJson::CJson(int number) : m_node(std::make_unique<Node>(number)) {}
CJson::CJson(unsigned int number) : m_node(std::make_unique<Node>(number)) {}
CJson::CJson(std::uint64_t number) : m_node(std::make_unique<Node>(number)) {}
CJson::CJson(double number) : m_node(std::make_unique<Node>(number)) {}
CJson::CJson(const char* text) : m_node(std::make_unique<Node>(text)) {}
CJson::CJson(std::string_view text) : m_node(std::make_unique<Node>(text)) {}
CJson::CJson(std::string text) : m_node(std::make_unique<Node>(std::move(text))) {}
CJson::CJson(const std::vector<std::string>& texts) : m_node(std::make_unique<Node>(texts)) {}
CJson::CJson(CJson&& other) noexcept = default;
CJson& CJson::operator=(CJson&& other) noexcept = default;
CJson::~CJson() = default;

CJson CJson::Object() {
  CJson json;
  json.m_node->json = nlohmann::ordered_json::object();
  return json;
}

CJson CJson::Array() {
  CJson json;
  json.m_node->json = nlohmann::ordered_json::array();
  return json;
}

void CJson::Set(std::string_view name, CJson value) {
  m_node->json[std::string(name)] = std::move(value.m_node->json);
}

void CJson::Add(CJson value) { m_node->json.push_back(std::move(value.m_node->json)); }

std::string CJson::Text() const { return WithoutControls(m_node->json.dump()); }

std::string CJson::IndentedText() const { return WithoutControls(m_node->json.dump(2)); }

CJson JsonOrNull(const std::optional<CString>& text) {
  return text ? CJson(ToUtf8(*text)) : CJson();
}

}  // namespace lum::tool
