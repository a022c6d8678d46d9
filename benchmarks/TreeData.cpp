// The data of the tree benchmarks, and files in a temporary folder.
#include "benchmarks/TreeData.h"

#include <cstdio>
#include <filesystem>
#include <random>
#include <utility>

namespace lum::bench {

namespace {

class CTemporaryFolder {
 public:
  CTemporaryFolder() : m_path(Root() / ("lum_bench_" + std::to_string(std::random_device()()))) {
    std::filesystem::create_directory(m_path);
  }
  ~CTemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  CTemporaryFolder(const CTemporaryFolder&) = delete;
  CTemporaryFolder& operator=(const CTemporaryFolder&) = delete;

  const std::filesystem::path& Path() const { return m_path; }

 private:
  static std::filesystem::path Root() {
    const std::filesystem::path memory = "/dev/shm";
    return std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
  }

  std::filesystem::path m_path;
};

std::vector<std::string> Numbered(const char* name, int count) {
  std::vector<std::string> names;
  names.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    names.push_back(name + std::to_string(i));
  }
  return names;
}

}  // namespace

CTreeData::CTreeData(Shape shapeOfTree, int attributes) : shape(shapeOfTree), count(attributes) {
  switch (shape) {
    case Shape::Levels:
      groups = Numbered("Group", count / (kLeaves * kParts));
      parts = Numbered("Part", kParts);
      leaves = {"Active", "Channel", "Depth",   "Title", "Visible",
                "Number", "Draught", "Comment", "Speed", "Offset"};
      break;
    case Shape::OneName:
      leaves = {"Sensor"};
      break;
    case Shape::DistinctNames:
      leaves = Numbered("Sensor", count);
      break;
  }
}

Kind KindOf(int i) {
  static constexpr Kind kKinds[CTreeData::kLeaves] = {
      Kind::Bool, Kind::Int,    Kind::Double, Kind::Name,   Kind::Bool,
      Kind::Int,  Kind::Double, Kind::Name,   Kind::Double, Kind::Double};
  return kKinds[i % CTreeData::kLeaves];
}

std::string NameOf(int i) { return "Outer harbour " + std::to_string(i); }

CTreeSum ExpectedSum(const CTreeData& data) {
  struct CRead {
    void operator()(int i, bool& value) const { value = BoolOf(i); }
    void operator()(int i, int& value) const { value = IntOf(i); }
    void operator()(int i, double& value) const { value = DoubleOf(i); }
    void operator()(int i, std::string& value) const { value = NameOf(i); }
  };
  return SumOf<std::string>(data, CRead());
}

std::vector<std::string> PathsOf(const CTreeData& data, char separator) {
  std::vector<std::string> paths;
  for (int i = 0; i < data.count; ++i) {
    std::string& path = paths.emplace_back();
    if (data.HasLevels()) {
      path += data.groups[CTreeData::GroupOf(i)] + separator;
      path += data.parts[CTreeData::PartOf(i)] + separator;
    }
    path += data.leaves[data.LeafOf(i)];
    if (data.shape == Shape::OneName && i > 0) {
      path += "(" + std::to_string(i) + ")";
    }
  }
  return paths;
}

std::vector<std::string> PartsOf(const CTreeData& data) {
  std::vector<std::string> parts;
  for (int i = 0; i < data.count; i += CTreeData::kLeaves) {
    parts.push_back(data.HasLevels() ? data.groups[CTreeData::GroupOf(i)] + "." +
                                           data.parts[CTreeData::PartOf(i)]
                                     : "Survey");
  }
  return parts;
}

std::vector<int> LookupOrder(int siblings) {
  constexpr int kLeast = 1000;
  std::vector<int> order;
  do {
    for (int i = 0; i < siblings; ++i) {
      order.push_back(i);
    }
  } while (order.size() < kLeast);
  std::mt19937 random(1);
  for (std::size_t left = order.size(); left > 1; --left) {
    std::swap(order[left - 1], order[random() % left]);
  }
  return order;
}

std::string TemporaryFile(const std::string& name) {
  static const CTemporaryFolder folder;
  return (folder.Path() / name).string();
}

std::string ReadFile(const std::string& path) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  std::FILE* file = error ? nullptr : std::fopen(path.c_str(), "rb");
  if (file == nullptr) {
    return {};
  }
  std::string text(size, '\0');
  text.resize(std::fread(text.data(), 1, text.size(), file));
  std::fclose(file);
  return text;
}

bool WriteFile(const std::string& path, std::string_view text) {
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) {
    return false;
  }
  const bool written = std::fwrite(text.data(), 1, text.size(), file) == text.size();
  return std::fclose(file) == 0 && written;
}

}  // namespace lum::bench
