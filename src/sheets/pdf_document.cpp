#include "sheets/pdf_document.h"

#include "platform/image/colour.h"
#include "sheets/pdf_content.h"
#include "sheets/pdf_font.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <qpdf/Pipeline.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFWriter.hh>

namespace veldara {
namespace {

QPDFObjectHandle name(const std::string& text) {
    return QPDFObjectHandle::newName(text);
}

QPDFObjectHandle integer(long long value) {
    return QPDFObjectHandle::newInteger(value);
}

// What a function of the caller's threw, on its way through the library, which would put words of
// its own before the text of every std::exception.
struct Passing {
    std::exception_ptr thrown;
};

template <class Call>
auto passing(Call&& call) {
    try {
        return call();
    } catch (const std::exception&) {
        throw Passing{std::current_exception()};
    }
}

// A stream whose bytes are made when the writer comes to it.
class LateBytes : public QPDFObjectHandle::StreamDataProvider {
  public:
    explicit LateBytes(std::function<std::vector<std::uint8_t>()> make) : make_(std::move(make)) {}
    void provideStreamData(QPDFObjGen const& /*object*/, Pipeline* pipeline) override {
        const std::vector<std::uint8_t> bytes = passing(make_);
        pipeline->write(bytes.data(), bytes.size());
        pipeline->finish();
    }

  private:
    std::function<std::vector<std::uint8_t>()> make_;
};

class OutputPipeline : public Pipeline {
  public:
    explicit OutputPipeline(const std::function<void(std::span<const std::uint8_t>)>& output)
        : Pipeline("document", nullptr), output_(output) {}
    void write(unsigned char const* data, size_t count) override {
        passing([&] { output_({data, count}); });
    }
    void finish() override {}

  private:
    const std::function<void(std::span<const std::uint8_t>)>& output_;
};

class Document {
  public:
    explicit Document(const PdfParts& parts) : parts_(parts) {}

    void write(const std::function<void(std::span<const std::uint8_t>)>& output) {
        document_.emptyPDF();
        for (const SheetPage& page : parts_.pages) {
            characters_.add(page);
        }
        font_ = embedFont(document_, characters_);
        for (std::size_t i = 0; i < parts_.pages.size(); ++i) {
            pictures_.push_back(parts_.pages[i].sheet == 0 ? smallPicture() : piecePicture(i));
        }
        for (std::size_t i = 0; i < parts_.pages.size(); ++i) {
            document_.addPage(page(i), false);
        }
        describe();

        OutputPipeline pipeline(output);
        QPDFWriter writer(document_);
        writer.setOutputPipeline(&pipeline);
        writer.setDeterministicID(true);
        writer.setObjectStreamMode(qpdf_o_disable);
        writer.setCompressStreams(true);
        writer.setDecodeLevel(qpdf_dl_none);
        writer.setMinimumPDFVersion("1.7");
        writer.write();
    }

  private:
    // An image object; its dictionary is complete but for the length.
    QPDFObjectHandle image(int width, int height, std::function<std::vector<std::uint8_t>()> make) {
        QPDFObjectHandle stream = document_.newStream();
        QPDFObjectHandle dictionary = stream.getDict();
        dictionary.replaceKey("/Type", name("/XObject"));
        dictionary.replaceKey("/Subtype", name("/Image"));
        dictionary.replaceKey("/Width", integer(width));
        dictionary.replaceKey("/Height", integer(height));
        dictionary.replaceKey("/BitsPerComponent", integer(8));
        stream.replaceStreamData(std::make_shared<LateBytes>(std::move(make)),
                                 QPDFObjectHandle::newNull(), QPDFObjectHandle::newNull());
        // Left as it is: filtering would ask for the bytes more than once.
        stream.setFilterOnWrite(false);
        return stream;
    }

    QPDFObjectHandle piecePicture(std::size_t page) {
        const PixelRectangle& pixels = parts_.pieces[page];
        const PieceFacts& facts = parts_.facts;
        QPDFObjectHandle stream =
            image(pixels.width, pixels.height, [this, page] { return parts_.piece(page); });
        QPDFObjectHandle dictionary = stream.getDict();
        dictionary.replaceKey("/ColorSpace", colourSpace());
        if (facts.inverted) {
            dictionary.replaceKey("/Decode", QPDFObjectHandle::parse("[1 0 1 0 1 0 1 0]"));
        }
        if (facts.filter == PieceFilter::flate) {
            dictionary.replaceKey("/Filter", name("/FlateDecode"));
            QPDFObjectHandle parameters = QPDFObjectHandle::newDictionary();
            parameters.replaceKey("/Predictor", integer(15));
            parameters.replaceKey("/Colors", integer(components()));
            parameters.replaceKey("/BitsPerComponent", integer(8));
            parameters.replaceKey("/Columns", integer(pixels.width));
            dictionary.replaceKey("/DecodeParms", parameters);
            return stream;
        }
        dictionary.replaceKey("/Filter", name("/DCTDecode"));
        if (facts.colourTransform >= 0) {
            QPDFObjectHandle parameters = QPDFObjectHandle::newDictionary();
            parameters.replaceKey("/ColorTransform", integer(facts.colourTransform));
            dictionary.replaceKey("/DecodeParms", parameters);
        }
        return stream;
    }

    QPDFObjectHandle smallPicture() {
        QPDFObjectHandle stream =
            image(parts_.smallWidth, parts_.smallHeight, [this] { return parts_.small(); });
        stream.getDict().replaceKey("/ColorSpace", smallColourSpace());
        stream.getDict().replaceKey("/Filter", name("/DCTDecode"));
        return stream;
    }

    int components() const {
        switch (parts_.facts.colour) {
        case PieceColour::grey:
            return 1;
        case PieceColour::rgb:
            break;
        case PieceColour::cmyk:
            return 4;
        }
        return 3;
    }

    // Of the pieces: the photo's own profile where it has one that describes them.
    QPDFObjectHandle colourSpace() {
        if (colours_.isInitialized()) {
            return colours_;
        }
        const PieceFacts& facts = parts_.facts;
        const bool grey = facts.colour == PieceColour::grey;
        const bool inks = facts.colour == PieceColour::cmyk;
        const ProfileKind fitting = grey   ? ProfileKind::grey
                                    : inks ? ProfileKind::cmyk
                                           : ProfileKind::rgb;
        colours_ = name(grey ? "/DeviceGray" : inks ? "/DeviceCMYK" : "/DeviceRGB");
        if (profileKind(facts.profile) == fitting) {
            colours_ = profiled(facts.profile, components(), colours_);
        }
        return colours_;
    }

    // Of the guide's picture, which has three parts: greys as equal triples, and inks converted.
    QPDFObjectHandle smallColourSpace() {
        const PieceFacts& facts = parts_.facts;
        if (facts.colour == PieceColour::rgb) {
            return colourSpace();
        }
        const ColourProfile profile = profileForRgbRows(facts.profile, true);
        return profile.empty() ? name("/DeviceRGB") : profiled(profile, 3, name("/DeviceRGB"));
    }

    QPDFObjectHandle profiled(const ColourProfile& profile, int parts, QPDFObjectHandle without) {
        QPDFObjectHandle stream = document_.newStream(std::string(profile.begin(), profile.end()));
        stream.getDict().replaceKey("/N", integer(parts));
        stream.getDict().replaceKey("/Alternate", without);
        QPDFObjectHandle space = QPDFObjectHandle::newArray();
        space.appendItem(name("/ICCBased"));
        space.appendItem(stream);
        return document_.makeIndirectObject(space);
    }

    QPDFObjectHandle page(std::size_t number) {
        const SheetPage& sheet = parts_.pages[number];
        PdfPicture picture{parts_.frame, parts_.pieces[number]};
        if (sheet.sheet == 0) {
            picture = {parts_.smallFrame, parts_.smallArea};
        }
        QPDFObjectHandle pictures = QPDFObjectHandle::newDictionary();
        pictures.replaceKey("/Photo", pictures_[number]);
        QPDFObjectHandle fonts = QPDFObjectHandle::newDictionary();
        fonts.replaceKey("/Text", font_);
        QPDFObjectHandle resources = QPDFObjectHandle::newDictionary();
        resources.replaceKey("/XObject", pictures);
        resources.replaceKey("/Font", fonts);
        QPDFObjectHandle box = QPDFObjectHandle::newArray();
        for (const double edge : {0.0, 0.0, sheet.width, sheet.height}) {
            box.appendItem(QPDFObjectHandle::newReal(pdfNumber(edge)));
        }
        QPDFObjectHandle result = QPDFObjectHandle::newDictionary();
        result.replaceKey("/Type", name("/Page"));
        result.replaceKey("/MediaBox", box);
        result.replaceKey("/Resources", resources);
        result.replaceKey("/Contents",
                          document_.newStream(pdfContent(sheet, picture, characters_)));
        return document_.makeIndirectObject(result);
    }

    // How it is to be printed, the pages' names, the title.
    void describe() {
        QPDFObjectHandle root = document_.getRoot();
        root.replaceKey("/ViewerPreferences",
                        QPDFObjectHandle::parse("<< /PrintScaling /None /Duplex /Simplex "
                                                "/PickTrayByPDFSize true /DisplayDocTitle true "
                                                ">>"));
        root.replaceKey("/PageLabels", pageLabels());
        root.replaceKey("/PieceInfo", document_.makeIndirectObject(pieceOrder()));
        QPDFObjectHandle information = QPDFObjectHandle::newDictionary();
        information.replaceKey("/Title", QPDFObjectHandle::newUnicodeString(parts_.title));
        information.replaceKey("/Producer", QPDFObjectHandle::newString("Veldara"));
        document_.getTrailer().replaceKey("/Info", document_.makeIndirectObject(information));
    }

    // A run of consecutive sheets shares one entry.
    QPDFObjectHandle pageLabels() {
        QPDFObjectHandle numbers = QPDFObjectHandle::newArray();
        int expected = -1;
        for (std::size_t i = 0; i < parts_.pages.size(); ++i) {
            const int sheet = parts_.pages[i].sheet;
            if (sheet != expected) {
                numbers.appendItem(integer(static_cast<long long>(i)));
                numbers.appendItem(QPDFObjectHandle::parse(
                    sheet == 0 ? "<< /P (Guide) >>"
                               : "<< /S /D /St " + std::to_string(sheet) + " >>"));
            }
            expected = sheet == 0 ? -1 : sheet + 1;
        }
        QPDFObjectHandle labels = QPDFObjectHandle::newDictionary();
        labels.replaceKey("/Nums", numbers);
        return labels;
    }

    // The writer writes objects in the order in which it meets them, and it meets these before the
    // pages' own: so it asks for the pieces in the order in which they are made, whichever way the
    // photo is turned, and for the guide's picture, which is met with its page, last.
    QPDFObjectHandle pieceOrder() {
        QPDFObjectHandle order = QPDFObjectHandle::newArray();
        for (const std::size_t page : parts_.order) {
            order.appendItem(pictures_[page]);
        }
        QPDFObjectHandle data = QPDFObjectHandle::newDictionary();
        // Such data must say when they were changed; the document is the same whenever it is made.
        data.replaceKey("/LastModified", QPDFObjectHandle::newString("D:20000101000000Z"));
        data.replaceKey("/Private", order);
        QPDFObjectHandle result = QPDFObjectHandle::newDictionary();
        result.replaceKey("/Veldara", data);
        return result;
    }

    const PdfParts& parts_;
    QPDF document_;
    PdfCharacters characters_;
    QPDFObjectHandle font_;
    QPDFObjectHandle colours_;
    std::vector<QPDFObjectHandle> pictures_;
};

} // namespace

void writePdf(const PdfParts& parts,
              const std::function<void(std::span<const std::uint8_t>)>& output) {
    try {
        Document(parts).write(output);
    } catch (const Passing& passing) {
        std::rethrow_exception(passing.thrown);
    }
}

} // namespace veldara
