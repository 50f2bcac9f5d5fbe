// A folder for files that only the program itself reads.
#ifndef PELGRIN_SCRATCHFOLDER_H
#define PELGRIN_SCRATCHFOLDER_H

#include <string>

namespace pelgrin {

class ScratchFolder {
public:
    ScratchFolder() = default;
    /// Removes the folder and what is in it.
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    /// The path of a file in it. The folder is made when it is asked for first,
    /// where the system has its temporary files. Throws Failure.
    std::string PathOf(const std::string& name);

    /// Writes a file and gives its path. Throws Failure.
    std::string Write(const std::string& name, const std::string& text);

private:
    std::string path_; ///< empty until the folder is made
};

} // namespace pelgrin

#endif // PELGRIN_SCRATCHFOLDER_H
