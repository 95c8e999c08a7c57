// Makes a resource of a program: reads a message as JSON and writes C++ that holds it flattened. The build runs it; see
// qel_resource in cmake/QelResources.cmake.

#include "tools/resources/JsonMessage.h"

#include "kits/application/Message.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

namespace {

int Fail(const std::string& what)
{
    std::fprintf(stderr, "%s\n", what.c_str());
    return 1;
}

std::string SourceOf(const std::string& name, const std::string& bytes)
{
    std::string source = "#include \"kits/storage/Resources.h\"\n"
                         "#include \"kits/support/TypeConstants.h\"\n\n"
                         "namespace {\n\nconst unsigned char kBytes[] = {";
    constexpr size_t kBytesInALine = 20;
    for (size_t index = 0; index < bytes.size(); ++index) {
        source += index % kBytesInALine == 0 ? "\n    " : " ";
        source += std::to_string(static_cast<unsigned char>(bytes[index])) + ",";
    }
    return source + "\n};\n\nconst kits::LinkedResource sResource(B_ANY_TYPE, \"" + name +
           "\", kBytes, sizeof kBytes);\n\n} // namespace\n";
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        return Fail("usage: resources NAME INPUT.json OUTPUT.cpp");
    }
    const std::string input = argv[2];
    std::ifstream file(input, std::ios::binary);
    const std::string json{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (!file) {
        return Fail(input + ": cannot be read");
    }
    BMessage message;
    std::string error;
    if (!MessageFromJson(json, &message, &error)) {
        return Fail(input + ": " + error);
    }
    const ssize_t size = message.FlattenedSize();
    std::string bytes(size > 0 ? static_cast<size_t>(size) : 0, '\0');
    if (message.Flatten(bytes.data(), size) != B_OK) {
        return Fail(input + ": too large or too deep");
    }
    std::ofstream output(argv[3], std::ios::binary | std::ios::trunc);
    output << SourceOf(argv[1], bytes);
    output.close();
    return output ? 0 : Fail(std::string(argv[3]) + ": cannot be written");
}
