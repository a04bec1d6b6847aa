#include "MeshInputs.h"

namespace {

const char* const kOdd[] = {"-1",    "0",   "2147483647", "-2147483648", "99999999999999999999",
                            "1e400", "nan", "inf",        "1.5",         "//",
                            "/",     "\\",  "\\\n",       "\\\r\n",      "\r",
                            "\n",    "#",   "v",          "vn",          "f",
                            "\t\t",  "+",   "-",          ".",           "e",
                            "<",     ">",   "{",          "}",           ",",
                            "\"",    "\xff"};

std::string Number(std::mt19937& random) {
    if (random() % 60 == 0) return kOdd[random() % (sizeof kOdd / sizeof kOdd[0])];
    const int value = int(random() % 20001) - 10000;
    return random() % 2 ? std::to_string(value * 0.001) : std::to_string(value % 20);
}

std::string Corner(std::mt19937& random, int vertices, int form) {
    if (random() % 80 == 0) return kOdd[random() % (sizeof kOdd / sizeof kOdd[0])];
    const auto index = [&random](int most) {
        const int number = 1 + int(random() % unsigned(most + 1)); // sometimes one too far
        return std::to_string(random() % 4 == 0 ? -number : number);
    };
    std::string corner = index(vertices);
    if (form == 1 || form == 2) corner += "/" + index(3);
    if (form == 2) corner += "/" + index(5);
    if (form == 3) corner += "//" + index(5);
    return corner;
}

std::string MakeObjText(std::mt19937& random) {
    std::string text;
    int vertices = 0;
    const char* const ends[] = {"\n", "\r\n", " \n", " # end\n", " \\\n\n"};
    for (auto lines = random() % 60; lines > 0; --lines) {
        const auto kind = random() % 10;
        if (kind < 5) {
            text += kind < 4 ? "v" : "vn";
            vertices += kind < 4 ? 1 : 0;
            for (auto k = random() % 20 == 0 ? random() % 7 : 3; k > 0; --k)
                text += " " + Number(random);
        } else if (kind < 9) {
            text += "f";
            const int form = int(random() % 4);
            for (auto k = 3 + random() % 3 - (random() % 30 == 0); k > 0; --k)
                text += " " + Corner(random, vertices, form);
        } else {
            text += std::string(random() % 2 ? "o f 1 2 3" : "usemtl ") + Number(random);
        }
        text += ends[random() % 5 == 0 ? random() % 5 : 0];
    }
    return text;
}

std::string MakeMesh2Text(std::mt19937& random) {
    std::string text = "//normal_start_at=##########\n#declare M=mesh2{\n";
    for (const char* block : {"vertex_vectors", "normal_vectors", "face_indices"}) {
        const int number = int(random() % 9);
        text += std::string("\t") + block + "{\n\t\t" +
                (random() % 9 ? std::to_string(number) : Number(random)) + ",\n";
        for (int i = 0; i < number; ++i) {
            const bool bIndices = block[0] == 'f';
            text += "\t\t<";
            for (int k = 0; k < 3; ++k)
                text += (bIndices ? std::to_string(random() % 8) : Number(random)) + (k < 2 ? "," : "");
            text += ">,\n";
        }
        text += "\t}\n";
    }
    return text + "}\n";
}

std::string Cut(std::string text, std::mt19937& random) {
    for (auto cuts = random() % 3; cuts > 0 && !text.empty(); --cuts) {
        const size_t at = random() % text.size();
        if (random() % 4 == 0)
            text.resize(at);
        else
            text.insert(at, kOdd[random() % (sizeof kOdd / sizeof kOdd[0])]);
    }
    return text;
}

} // namespace

std::string MakeObjInput(std::mt19937& random) { return Cut(MakeObjText(random), random); }
std::string MakeMesh2Input(std::mt19937& random) { return Cut(MakeMesh2Text(random), random); }
