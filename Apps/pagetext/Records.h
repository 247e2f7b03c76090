#ifndef PAGETEXT_RECORDS_H
#define PAGETEXT_RECORDS_H

// Pages and records as JSON objects of one line, without the line end. UTF-8.

#include <TextKit.h>

#include <cstddef>
#include <string>

#include "Options.h"
#include "Pages.h"

namespace pagetext {

// A longer record stays out of memory; 48 MiB fit as base64.
constexpr std::size_t kMostRecordBytes = 64 << 20;

// {"name":…,"encoding":…,"text":…,"sentences":[…],"emails":[…],"replaced":…}
std::string DescribePage(const std::string& name, const Page& page);

// The answer to a record: a JSON object with "path", a file to read, or "bytes", a page in base64. The answer repeats
// its "id" (text or number) and "path" and holds what the form of the options asks for. A record that is no such
// object, or whose file cannot be read, is answered by "line", `number`, and "error", the reason. Throws nothing.
std::string AnswerRecord(const std::string& record, std::size_t number, const Options& options,
                         const textkit::CodeMaps& maps);

// The same answer where the record itself could not be taken.
std::string RefuseRecord(std::size_t number, const std::string& reason);

}  // namespace pagetext

#endif
