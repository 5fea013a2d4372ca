#include "output/photo_copy.h"

#include "platform/error.h"
#include "platform/files/whole_file.h"
#include "platform/image/byte_source.h"
#include "platform/image/input_format.h"
#include "platform/text/characters.h"
#include "platform/text/path_text.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace veldara {

namespace {

constexpr int rowsOfStep = 64;

// With the dot; empty when there is none, or nothing before it.
std::string endingOf(const std::string& name) {
    const std::size_t dot = name.find_last_of('.');
    return dot == std::string::npos || dot == 0 ? std::string() : name.substr(dot);
}

bool isJpeg(const ImageHeader& header) {
    return header.format->tileFormat == TileFormat::jpeg;
}

std::vector<std::uint8_t> bytesOf(const std::filesystem::path& file) {
    const std::unique_ptr<ByteSource> source = openFileBytes(file);
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(source->size()));
    if (!source->readFully(0, bytes.data(), bytes.size())) {
        throw Error("Could not read \"" + pathText(file) + "\": it changed while it was read.");
    }
    return bytes;
}

} // namespace

bool hasPictureEnding(const std::string& name) {
    const std::string ending = lowerCase(endingOf(name));
    const auto& formats = inputFormats();
    return std::any_of(formats.begin(), formats.end(), [&](const InputFormat& format) {
        return std::find(format.endings.begin(), format.endings.end(), ending) !=
               format.endings.end();
    });
}

std::string photoCopyName(const std::string& photoName, const ImageHeader& header,
                          const std::function<bool(const std::string& name)>& taken) {
    const std::string stem = photoName.substr(0, photoName.size() - endingOf(photoName).size());
    const std::string ending = extensionOf(isJpeg(header) ? TileFormat::jpeg : TileFormat::tiff);
    std::string name = stem + ending;
    for (int number = 2; taken(name); ++number) {
        name = stem;
        name.append(" (").append(std::to_string(number)).append(")").append(ending);
    }
    return name;
}

Message photoCopyOffer(const std::string& photoName, const std::string& copyName) {
    return {photoName +
                " is not a file that can be cut into tiles as it is. Make a copy of it as " +
                copyName + " and open that?",
            "", MessageIcon::question, MessageButtons::yesNo};
}

PhotoCopy::PhotoCopy(const std::filesystem::path& photo, std::filesystem::path target)
    : photo_(photo), target_(std::move(target)), reader_(openRowReader(photo)) {
    const ImageHeader& header = reader_->header();
    if (!isJpeg(header)) {
        encoder_ = openRowEncoder(header.width, header.height, TileFormat::tiff, header.dotsPerInch,
                                  reader_->colourProfile());
        readRows();
    }
}

double PhotoCopy::fraction() const {
    return done_ ? 1.0 : static_cast<double>(nextRow_) / (reader_->header().height + 1.0);
}

void PhotoCopy::step() {
    if (!encoder_) {
        finish(bytesOf(photo_));
        return;
    }
    if (nextRow_ == reader_->header().height) {
        finish(encoder_->finish());
        return;
    }
    encoder_->writeRows(rows_.view());
    nextRow_ += rows_.height();
    readRows();
}

void PhotoCopy::readRows() {
    const ImageHeader& header = reader_->header();
    const int count = std::min(rowsOfStep, header.height - nextRow_);
    if (count > 0) {
        rows_ = Image(header.width, count);
        reader_->readRows(rows_.mutableView());
    }
}

void PhotoCopy::finish(const std::vector<std::uint8_t>& bytes) {
    std::error_code error;
    if (std::filesystem::exists(std::filesystem::symlink_status(target_, error))) {
        throw Error("Could not write \"" + pathText(target_) + "\": there is such a file already.");
    }
    writeWholeFile(target_, bytes);
    done_ = true;
}

bool mayWriteIn(const std::filesystem::path& folder) {
    const std::filesystem::path probe = folder / ".veldara-copy.tmp";
    try {
        writeWholeFile(probe, std::vector<std::uint8_t>());
    } catch (const Error&) {
        return false;
    }
    std::error_code error;
    std::filesystem::remove(probe, error);
    return true;
}

PhotoCopyHooks realPhotoCopy() {
    return {[](const std::filesystem::path& photo) { return readImageHeader(photo); }, mayWriteIn,
            [](const std::filesystem::path& photo, const std::filesystem::path& target,
               const StopFlag&) { return std::make_unique<PhotoCopy>(photo, target); }};
}

PhotoCopyHooks realPhotoCopy(StoppableWork& decoding) {
    PhotoCopyHooks hooks = realPhotoCopy();
    hooks.begin = [&decoding, begin = hooks.begin](const std::filesystem::path& photo,
                                                   const std::filesystem::path& target,
                                                   const StopFlag& stop) {
        return decoding.run<std::unique_ptr<CopySteps>>(
            [=](const StopFlag& own) { return begin(photo, target, own); }, stop);
    };
    return hooks;
}

} // namespace veldara
