#include "tools/lumattr/Json.h"

#include <nlohmann/json.hpp>
#include <utility>

namespace lum::tool {

struct CJson::Node {
  nlohmann::ordered_json json;
};

CJson::CJson(Node node) : m_node(std::make_unique<Node>(std::move(node))) {}
CJson::CJson() : CJson(Node()) {}
CJson::CJson(bool value) : CJson(Node{value}) {}
CJson::CJson(int number) : CJson(Node{number}) {}
CJson::CJson(unsigned int number) : CJson(Node{number}) {}
CJson::CJson(std::uint64_t number) : CJson(Node{number}) {}
CJson::CJson(double number) : CJson(Node{number}) {}
CJson::CJson(const char* text) : CJson(Node{text}) {}
CJson::CJson(std::string_view text) : CJson(Node{text}) {}
CJson::CJson(std::string text) : CJson(Node{std::move(text)}) {}
CJson::CJson(const std::vector<std::string>& texts) : CJson(Node{texts}) {}
CJson::CJson(CJson&& other) noexcept = default;
CJson& CJson::operator=(CJson&& other) noexcept = default;
CJson::~CJson() = default;

CJson CJson::Object() { return CJson(Node{nlohmann::ordered_json::object()}); }

CJson CJson::Array() { return CJson(Node{nlohmann::ordered_json::array()}); }

void CJson::Set(std::string_view name, CJson value) {
  m_node->json[std::string(name)] = std::move(value.m_node->json);
}

void CJson::Add(CJson value) { m_node->json.push_back(std::move(value.m_node->json)); }

std::string CJson::Text() const { return m_node->json.dump(); }

std::string CJson::IndentedText() const { return m_node->json.dump(2); }

}  // namespace lum::tool
