// The reading operations of codec.h on bytes from anywhere; the name is for the error sentences.
#pragma once

#include "platform/image/byte_source.h"
#include "platform/image/codec.h"

#include <memory>
#include <string>

namespace veldara {

ImageHeader readImageHeader(std::unique_ptr<ByteSource> source, const std::string& name);
Image loadImage(std::unique_ptr<ByteSource> source, const std::string& name,
                const StopFlag& stop = StopFlag());
std::unique_ptr<RowReader> openRowReader(std::unique_ptr<ByteSource> source,
                                         const std::string& name);

} // namespace veldara
