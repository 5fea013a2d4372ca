// The models' UTF-8 text as the toolkit's, and back. Text that is not valid UTF-8 (a file name from
// an old disk) is shown with marks in place of the bytes that mean nothing.
#pragma once

#include <string>
#include <vector>

#include <wx/arrstr.h>
#include <wx/string.h>

class wxTextEntry;

namespace veldara {

wxString nativeText(const std::string& utf8);
wxArrayString nativeTexts(const std::vector<std::string>& utf8);
std::string portableText(const wxString& text);

// What stands in a field of one line. On Linux line breaks come in with what is pasted: the field
// is cut at the first, as other systems do it.
std::string enteredLine(wxTextEntry& field);

// The text as a native label: a '&' of its own is doubled, and the first place of the letter (as it
// is written, or in the other case) is marked as the key that goes with Alt. 0: no key.
wxString nativeLabel(const std::string& utf8, char mnemonic);

} // namespace veldara
