#include "RunImport.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zlib.h>

#include <cstring>
#include <iterator>
#include <sstream>

#include <gtest/gtest.h>

std::string ReadBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::string Gzip(const std::string& bytes) {
    const TempFolder_cls folder;
    const std::string path = folder.GetPath() + "/a.gz";
    gzFile file = gzopen(path.c_str(), "wb");
    gzwrite(file, bytes.data(), static_cast<unsigned>(bytes.size()));
    gzclose(file);
    return ReadBytes(path);
}

ImportRunResult_st ImportFolder_st::Run(const std::vector<std::string>& words, long fileBytes,
                                        const std::string& output,
                                        const std::function<void(int pid)>& meanwhile) const {
    std::vector<std::string> all = {MORENTIS_IMPORT};
    all.insert(all.end(), words.begin(), words.end());
    all.insert(all.end(), {"--output", output.empty() ? *this / "out" : output});
    std::vector<char*> pointers;
    for (std::string& word : all)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    const std::string err = *this / "stderr";
    const pid_t pid = fork();
    if (pid == 0) {
        dup2(open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 2);
        const rlimit limit = {rlim_t(fileBytes), rlim_t(fileBytes)};
        if (fileBytes > 0) setrlimit(RLIMIT_FSIZE, &limit);
        execv(MORENTIS_IMPORT, pointers.data());
        _exit(126);
    }
    if (meanwhile) meanwhile(pid);
    ImportRunResult_st result;
    int status = 0;
    rusage usage{};
    wait4(pid, &status, 0, &usage);
    result.mStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    result.mErr = ReadBytes(err);
    result.mPeakKB = usage.ru_maxrss;
    return result;
}

std::map<std::string, std::string> ImportFolder_st::ReadProject() const {
    std::istringstream text(ReadBytes(*this / "out/out.mrp"));
    std::map<std::string, std::string> lines;
    for (std::string line; std::getline(text, line);)
        lines[line.substr(0, line.find('='))] = line.substr(line.find('=') + 1);
    return lines;
}

int ImportFolder_st::CountSnapshots() const {
    int count = 0;
    char name[40];
    do
        std::snprintf(name, sizeof name, "/out/snap%04d.bin", count++);
    while (access((GetPath() + name).c_str(), R_OK) == 0);
    return count - 1;
}

ReadSnapshot_st ImportFolder_st::ReadSnapshot(int index) const {
    char name[40];
    std::snprintf(name, sizeof name, "/out/snap%04d.bin", index);
    const std::string bytes = ReadBytes(GetPath() + name);
    std::istringstream body(ReadProject()["DataLoadGrammerBody"]);
    const std::vector<int> codes{std::istream_iterator<int>(body), {}};
    ReadSnapshot_st snap;
    int number = 0;
    if (bytes.size() < 8) return snap;
    std::memcpy(&snap.mTime, bytes.data(), 4);
    std::memcpy(&number, bytes.data() + 4, 4);
    const char* p = bytes.data() + 8;
    const auto take = [&p](auto* pColumn, size_t words) {
        const size_t size = pColumn->size();
        pColumn->resize(size + words);
        std::memcpy(pColumn->data() + size, p, 4 * words);
        p += 4 * words;
    };
    for (int i = 0; i < number && p < bytes.data() + bytes.size(); ++i) {
        for (const int code : codes) {
            if (code == 0) take(&snap.mPos, 3);
            if (code == 1) take(&snap.mVel, 3);
            if (code == 5) take(&snap.mRadius, 1);
            if (code == 6) take(&snap.mID, 1);
            if (code == 7) take(&snap.mType, 1);
            if (code == 8) take(&snap.mValue, 1);
        }
    }
    EXPECT_EQ(p, bytes.data() + bytes.size()) << "bytes that no particle has";
    return snap;
}
