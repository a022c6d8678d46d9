// What the tests of attribute trees share: texts that describe trees and sections, definitions.
#pragma once

#include <string>

#include "attributes/AttributeMap.h"
#include "tests/TextPrinting.h"

/// Everything a tree holds below the node, in one line: for each child its name, occurrences being
/// told by the order, and in braces its children. A node reads "name:kind:text:flags", a "*"
/// follows when it is marked.
std::string Describe(const CAttributeMap& map);
/// The same for the node itself and everything below.
std::string DescribeNode(const CAttributeMap& node);
/// The names of the direct children, joined by blanks.
std::string Names(const CAttributeMap& map);
/// The items of a section in the order of the walk, "key=value" joined by "|".
std::string Items(const FileObject& file, const CString& section);
/// What a value writes, or "-" when it has no text form.
std::string TextOf(const CLumType& value);
std::string Narrow(const CString& text);

/// A section "S" that holds the items of a text such as "A=0,1|B=0,2".
FileObject FileWithItems(const std::string& items);

/// Fills the process-wide definition table from kTestDefinitions: DefInt (default 7), DefDouble
/// (2.5), DefName ("none"), DefArray (1,2,3) and DefNone, whose type code makes no value.
void LoadTestDefinitions();
inline constexpr const char* kTestDefinitions =
    "DefInt,1,An int,101,0,,7\n"
    "DefDouble,2,A double,103,0,,2.5\n"
    "DefName,3,A name,501,0,,none\n"
    "DefArray,4,A list,603,0,,1,2,3\n"
    "DefNone,5,Nothing,999,0,,x\n";
