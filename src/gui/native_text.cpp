#include "gui/native_text.h"

#include <cctype>

#include <wx/textctrl.h>

namespace veldara {

namespace {

wxString shownByteByByte(const std::string& bytes) {
    wxString text;
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        text += code < 0x80 ? wxUniChar(code) : wxUniChar(0xFFFD);
    }
    return text;
}

std::size_t placeOf(const std::string& text, char letter) {
    const std::size_t asWritten = text.find(letter);
    if (asWritten != std::string::npos) {
        return asWritten;
    }
    const int other = std::isupper(static_cast<unsigned char>(letter)) != 0
                          ? std::tolower(static_cast<unsigned char>(letter))
                          : std::toupper(static_cast<unsigned char>(letter));
    return text.find(static_cast<char>(other));
}

} // namespace

wxString nativeText(const std::string& utf8) {
    wxString text = wxString::FromUTF8(utf8.data(), utf8.size());
    if (text.empty() && !utf8.empty()) {
        return shownByteByByte(utf8);
    }
    text.Replace("\r\n", "\n"); // the toolkit's line end everywhere
    return text;
}

wxArrayString nativeTexts(const std::vector<std::string>& utf8) {
    wxArrayString texts;
    texts.Alloc(utf8.size());
    for (const std::string& text : utf8) {
        texts.Add(nativeText(text));
    }
    return texts;
}

std::string portableText(const wxString& text) {
    const wxScopedCharBuffer bytes = text.utf8_str();
    return {bytes.data(), bytes.length()};
}

std::string enteredLine(wxTextEntry& field) {
    const wxString text = field.GetValue();
    const wxString line = text.substr(0, text.find_first_of("\r\n"));
    if (line != text) {
        field.ChangeValue(line);
        field.SetInsertionPointEnd();
    }
    return portableText(line);
}

wxString nativeLabel(const std::string& utf8, char mnemonic) {
    const std::size_t place = mnemonic == 0 ? std::string::npos : placeOf(utf8, mnemonic);
    std::string label;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        if (i == place || utf8[i] == '&') {
            label += '&';
        }
        label += utf8[i];
    }
    return nativeText(label);
}

} // namespace veldara
