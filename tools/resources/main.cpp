// SPDX-License-Identifier: MIT
// Makes a resource of a program: writes C++ that holds a file's bytes; a message in JSON is flattened first. The build
// runs it; see qel_resource in cmake/QelResources.cmake. Without a name it writes the bytes themselves: a settings
// file. A translation (.ts) becomes a message too, and a picture (.png) becomes its pixels.

#include "kits/application/Message.h"
#include "tools/resources/JsonMessage.h"
#include "tools/resources/Picture.h"
#include "tools/resources/Translation.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>

namespace {

int Fail(const std::string& what)
{
    std::fprintf(stderr, "%s\n", what.c_str());
    return 1;
}

std::string SourceOf(const std::string& name, const std::string& type, const std::string& bytes)
{
    std::string source = "#include \"kits/storage/Resources.h\"\n"
                         "#include \"kits/support/TypeConstants.h\"\n\n"
                         "namespace {\n\nconst unsigned char kBytes[] = {";
    constexpr size_t kBytesInALine = 20;
    for (size_t index = 0; index < bytes.size(); ++index) {
        source += index % kBytesInALine == 0 ? "\n    " : " ";
        source += std::to_string(static_cast<unsigned char>(bytes[index])) + ",";
    }
    return source + "\n};\n\nconst kits::LinkedResource sResource(" + type + ", \"" + name +
           "\", kBytes, sizeof kBytes);\n\n} // namespace\n";
}

/// @return an empty text on success, otherwise a description of the fault in the message
std::string Flatten(const std::string& text, bool isTranslation, std::string* bytes)
{
    BMessage message;
    std::string error;
    if (!(isTranslation ? TranslationFromTs : MessageFromJson)(text, &message, &error))
        return error;
    const ssize_t size = message.FlattenedSize();
    bytes->assign(size > 0 ? static_cast<size_t>(size) : 0, '\0');
    return message.Flatten(bytes->data(), size) == B_OK ? std::string() : "too large or too deep";
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3 && argc != 4)
        return Fail("usage: resources NAME INPUT OUTPUT.cpp, or resources INPUT.json OUTPUT");
    const std::string input = argv[argc - 2];
    std::ifstream file(input, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (!file)
        return Fail(input + ": cannot be read");
    const bool isTranslation = input.ends_with(".ts");
    const bool isMessage = isTranslation || input.ends_with(".json");
    if (isMessage) {
        const std::string text = std::exchange(bytes, {});
        if (const std::string error = Flatten(text, isTranslation, &bytes); !error.empty())
            return Fail(input + ": " + error);
    }
    if (input.ends_with(".png") && !PixelsOfPicture(std::exchange(bytes, {}), &bytes))
        return Fail(input + ": no picture");
    const std::string name = argv[argc - 1];
    std::ofstream output(name, std::ios::binary | std::ios::trunc);
    output << (argc == 3 ? bytes : SourceOf(argv[1], isMessage ? "B_ANY_TYPE" : "B_RAW_TYPE", bytes));
    output.close();
    return output ? 0 : Fail(name + ": cannot be written");
}
