#include "IMPORT/clsImportNote.h"

#include <sys/stat.h>

#include <cinttypes>
#include <cstdio>
#include <sstream>

#include "IMPORT/ImportText.h"

namespace {

const std::string kBody = "body ";
const std::string kType = "type ";
const std::string kProject = "project ";

std::string Hex(uint64_t number) {
    char text[20];
    std::snprintf(text, sizeof text, "%016" PRIx64, number);
    return text;
}

} // namespace

uint64_t HashBytes(const std::string& bytes) {
    uint64_t hash = 0xcbf29ce484222325u;
    for (const char c : bytes)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3u;
    return hash;
}

uint64_t HashSource(const std::vector<std::string>& files, int number) {
    std::string all = std::to_string(number);
    for (const std::string& file : files) {
        struct stat facts {};
        if (stat(file.c_str(), &facts) != 0) facts.st_size = -1;
        all += '\n' + file + '\n' + std::to_string(facts.st_size) + ' ' +
               std::to_string(facts.st_mtim.tv_sec) + '.' + std::to_string(facts.st_mtim.tv_nsec);
    }
    return HashBytes(all);
}

void ImportNote_cls::Read(const std::string& text) {
    std::istringstream lines(text);
    std::getline(lines, mOptions);
    for (std::string line; std::getline(lines, line);) {
        int index = 0;
        uint64_t hash = 0;
        if (StartsWith(line, kBody)) {
            mBody = line.substr(kBody.size());
        } else if (StartsWith(line, kType)) {
            mTypeNames.push_back(line.substr(kType.size()));
        } else if (StartsWith(line, kProject)) {
            if (std::sscanf(line.c_str(), "project %" SCNx64, &hash) == 1) mProject = hash;
        } else if (std::sscanf(line.c_str(), "%d %" SCNx64, &index, &hash) == 2) {
            mSources[index] = hash;
        }
    }
}

std::string ImportNote_cls::GetText() const {
    std::string text = mOptions + "\n" + kBody + mBody + "\n";
    for (const std::string& name : mTypeNames)
        text += kType + name + "\n";
    if (mProject != 0) text += kProject + Hex(mProject) + "\n";
    for (const auto& [index, hash] : mSources)
        text += std::to_string(index) + " " + Hex(hash) + "\n";
    return text;
}
