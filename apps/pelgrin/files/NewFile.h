// A file that is written beside its target and takes its place when it is done.
#ifndef PELGRIN_NEWFILE_H
#define PELGRIN_NEWFILE_H

#include <string>

namespace pelgrin {

/// Throws Failure unless target is no file yet, or an ordinary one that the
/// library's writers can reach: they take a backslash as a separator.
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
