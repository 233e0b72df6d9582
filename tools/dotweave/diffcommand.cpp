#include "diffcommand.h"

#include "maskbytes.h"
#include "usageerror.h"
#include "view/maskdifference.h"

#include <nlohmann/json.hpp>

#include <ostream>

namespace dotweave {

namespace {

using nlohmann::ordered_json;

ordered_json Shape_Json(const SMaskShape& shape)
{
    return {{"colorCount", shape.colorCount}, {"positionCount", shape.positionCount},
            {"height", shape.height},         {"width", shape.width},
            {"lineBytes", shape.lineBytes},   {"bitsPerPixel", shape.bitsPerPixel}};
}

/// "4 colours of 4 positions of 544 lines of 544 pixels of 1 bit"
std::string Shape_Text(const SMaskShape& shape)
{
    return std::to_string(shape.colorCount) + " colours of " + std::to_string(shape.positionCount) +
           " positions of " + std::to_string(shape.height) + " lines of " + std::to_string(shape.width) +
           " pixels of " + std::to_string(shape.bitsPerPixel) + (shape.bitsPerPixel == 1 ? " bit" : " bits");
}

/// Masks of different sizes are not compared byte by byte.
EExitStatus Sizes_Report(const SMaskBytes& a, const SMaskBytes& b, bool isJson, std::ostream& out)
{
    if (isJson) {
        ordered_json object = {{"equal", false}, {"bytes", {a.bytes.size(), b.bytes.size()}}};
        if (a.shape && b.shape)
            object["shapes"] = {Shape_Json(*a.shape), Shape_Json(*b.shape)};
        out << object.dump(4) << '\n';
        return ExitStatus_CheckFailed;
    }
    out << "different sizes\n";
    for (const SMaskBytes* one : {&a, &b})
        out << "  " << one->bytes.size() << " bytes" << (one->shape ? ": " + Shape_Text(*one->shape) : "")
            << '\n';
    return ExitStatus_CheckFailed;
}

ordered_json Difference_Json(const SMaskDifference& difference, std::size_t byteCount, bool hasShape)
{
    ordered_json object = {
        {"equal", difference.byteCount == 0}, {"bytes", byteCount}, {"differentBytes", difference.byteCount}};
    if (hasShape) {
        object["differentPixels"] = difference.pixelCount;
        object["differentLines"] = difference.lineCount;
    }
    if (difference.byteCount > 0) {
        object["first"] = {{"byte", difference.firstByte}};
        if (hasShape)
            object["first"].update({{"color", difference.color},
                                    {"position", difference.position},
                                    {"line", difference.line},
                                    {"column", difference.column}});
    }
    return object;
}

void Difference_Print(const SMaskDifference& difference, std::size_t byteCount, bool hasShape,
                      std::ostream& out)
{
    if (difference.byteCount == 0) {
        out << "equal: " << byteCount << " bytes\n";
        return;
    }
    out << "different bytes   " << difference.byteCount << " of " << byteCount << '\n';
    if (hasShape)
        out << "different pixels  " << difference.pixelCount << '\n'
            << "different lines   " << difference.lineCount << '\n';
    out << "first             byte " << difference.firstByte;
    if (hasShape)
        out << ": colour " << difference.color << ", position " << difference.position << ", line "
            << difference.line << ", "
            << (difference.column < 0 ? "padding" : "column " + std::to_string(difference.column));
    out << '\n';
}

} // namespace

CDiffCommand::CDiffCommand(CLI::App& app)
    : CCommand(app, "diff", "Compare the masks of two print modes or files; exit status 1 when they differ",
               "dotweave diff production speed\n"
               "dotweave diff masks/mask.bin production")
{
    Options()
        .add_option(
            "A", m_first,
            "a preset, a mode file *.json, a folder that \"dotweave build\" has written, or its mask.bin")
        ->type_name("")
        ->required();
    Options().add_option("B", m_second, "another of them")->type_name("")->required();
    Json_Add("an object with equal, bytes, differentBytes, differentPixels, differentLines and first");
}

EExitStatus CDiffCommand::Run(CConsole& console) const
{
    const SMaskBytes a = MaskBytes_ByWord(m_first, console);
    const SMaskBytes b = MaskBytes_ByWord(m_second, console);
    std::ostream& out = console.Out();
    const bool hasShape = a.shape && b.shape;
    if (a.bytes.size() != b.bytes.size() || (hasShape && *a.shape != *b.shape))
        return Sizes_Report(a, b, IsJson(), out);
    const std::optional<SMaskShape>& shape = a.shape ? a.shape : b.shape; // equal sizes: one knows for both
    const SMaskDifference difference =
        shape ? MaskDifference(a.bytes, b.bytes, *shape) : BytesDifference(a.bytes, b.bytes);
    if (IsJson())
        out << Difference_Json(difference, a.bytes.size(), shape.has_value()).dump(4) << '\n';
    else
        Difference_Print(difference, a.bytes.size(), shape.has_value(), out);
    return difference.byteCount == 0 ? ExitStatus_Good : ExitStatus_CheckFailed;
}

} // namespace dotweave
