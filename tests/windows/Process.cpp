#include "tests/windows/Process.h"

#include <thread>
#include <utility>

namespace lum::test {

namespace {

std::string ReadToTheEnd(HANDLE pipe) {
  std::string text;
  char piece[4096];
  DWORD count = 0;
  while (::ReadFile(pipe, piece, sizeof piece, &count, nullptr) != 0 && count > 0) {
    text.append(piece, count);
  }
  return text;
}

// A pipe whose writing end a child process gets.
struct CPipe {
  CPipe() {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    ::CreatePipe(reader.Receive(), writer.Receive(), &inherited, 0);
    ::SetHandleInformation(reader.Get(), HANDLE_FLAG_INHERIT, 0);
  }

  CHandle reader;
  CHandle writer;
};

std::wstring Quoted(const std::wstring& word) {
  std::wstring quoted = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t ch : word) {
    if (ch == L'"') {
      quoted.append(backslashes + 1, L'\\');
    }
    backslashes = ch == L'\\' ? backslashes + 1 : 0;
    quoted += ch;
  }
  return quoted.append(backslashes, L'\\') + L'"';
}

}  // namespace

std::wstring CommandLine(const std::vector<std::wstring>& words) {
  std::wstring line;
  for (const std::wstring& word : words) {
    line += (line.empty() ? L"" : L" ") + Quoted(word);
  }
  return line;
}

CHandle StartProcess(std::wstring commandLine, const ProcessSetup& setup) {
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  if (setup.output != nullptr) {
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = setup.output;
    startup.hStdError = setup.errors;
  }
  PROCESS_INFORMATION process = {};
  const wchar_t* folder = setup.folder.empty() ? nullptr : setup.folder.c_str();
  if (::CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, setup.flags, nullptr,
                       folder, &startup, &process) == 0) {
    return CHandle(nullptr);
  }
  ::CloseHandle(process.hThread);
  return CHandle(process.hProcess);
}

DWORD RunProcess(std::wstring commandLine, const ProcessSetup& setup) {
  DWORD exitCode = 0xFFFFFFFF;
  const CHandle process = StartProcess(std::move(commandLine), setup);
  if (process.Get() != nullptr && ::WaitForSingleObject(process.Get(), 60'000) == WAIT_OBJECT_0) {
    ::GetExitCodeProcess(process.Get(), &exitCode);
  }
  return exitCode;
}

ProcessResult RunAndCollect(const std::vector<std::wstring>& words,
                            const std::filesystem::path& folder) {
  CPipe output;
  CPipe errors;
  ProcessResult result;
  std::thread outputReader([&] { result.output = ReadToTheEnd(output.reader.Get()); });
  std::thread errorReader([&] { result.errors = ReadToTheEnd(errors.reader.Get()); });
  result.exitCode =
      RunProcess(CommandLine(words), {folder, output.writer.Get(), errors.writer.Get(), 0});
  output.writer.Close();
  errors.writer.Close();
  outputReader.join();
  errorReader.join();
  return result;
}

}  // namespace lum::test
