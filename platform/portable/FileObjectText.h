// The way between a configuration file's bytes and its document.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/FileObject.h"
#include "platform/portable/FileDocument.h"

namespace lum::detail {

/// Any bytes are a file: lines without meaning are kept as they are.
CFileDocument ParseFile(const std::shared_ptr<const std::string>& file);

/// Makes the bytes of the file. False when a text cannot be written in the file's encoding; `error`
/// then says which.
bool WriteFile(const CFileDocument& document, std::string& file, CString& error);

/// The lines of a file, for tools.
std::vector<FileObjectLine> DescribeLines(const std::string& file, TextFileEncoding encoding);

}  // namespace lum::detail
