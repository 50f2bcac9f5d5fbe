// A file that is written beside its target and takes its place when it is done.
#ifndef PELGRIN_NEWFILE_H
#define PELGRIN_NEWFILE_H

#include <string>

namespace pelgrin {

/// Throws Failure for a path with a backslash: the library's writers take it as a
/// separator.
void RefuseBackslash(const std::string& path);

/// Throws Failure unless target is no file yet, or an ordinary one, in a folder where
/// files can be made and within reach of the library's writers. The log file is none:
/// it would be gone with its name.
void CheckTarget(const std::string& target);

class NewFile {
public:
    /// Makes an empty file beside target. Every member throws Failure with the
    /// path of target when it cannot be written.
    explicit NewFile(const std::string& target);
    /// Removes the file unless it was moved to its target.
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    const std::string& Path() const { return path_; }

    void MoveToTarget();

private:
    std::string target_;
    std::string path_;
};

} // namespace pelgrin

#endif // PELGRIN_NEWFILE_H
