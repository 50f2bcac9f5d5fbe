// The host's own index of an MGF file: which record stands under which name.
//
// The library answers a name with the last record that bears it, and tells nobody
// by which kind of name, nor that others bear it, too. This index holds the same
// names of the same records; a test compares both on random files.
#ifndef PELGRIN_MGFINDEX_H
#define PELGRIN_MGFINDEX_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/FileLines.h"
#include "files/MgfNames.h"

namespace pelgrin {

class MgfIndex {
public:
    struct Record {
        std::uint64_t line = 0; ///< of its beginning, from 1
        /// As the library reads it, Th: a record without peaks has the one of the
        /// next record (B-16). Nothing where no line sets it: the library then
        /// keeps the value of the spectrum read before (B-10).
        std::optional<double> precursorMz;
        std::uint64_t charge = 0; ///< likewise; 0: not known
    };

    /// What a name finds.
    struct Hit {
        std::size_t record = 0;          ///< place of the record that the library gives
        NameKind kind = NameKind::Title; ///< by which that record bears the name
        std::size_t bearers = 1;         ///< records that bear it, by whatever kind
        /// Several bear it, and it is not the whole title of the given one alone.
        bool isAmbiguous = false;
        /// Nobody bears it but as a scan number that lost its last digit (B-13).
        bool isCutScan = false;
    };

    // Every line of the file, in order; then Finish. What follows is good then.
    void Take(const FileLines::Line& line);
    void Finish();

    std::optional<Hit> Find(std::string_view name) const;
    /// The places of the records that bear a name, at most so many of the first.
    std::vector<std::size_t> BearersOf(std::string_view name, std::size_t most) const;
    const std::vector<Record>& Records() const { return records_; }
    /// Different names, as many as the library's index has.
    std::size_t Names() const { return groups_.size(); }
    std::size_t AmbiguousNames() const;
    /// For every record a name that finds it and no other; empty where there is
    /// none. Good as long as the index is.
    std::vector<std::string_view> NamesThatFind() const;

    /// The names that stand beside name in byte-wise order, at most so many on
    /// either side. Cut scan numbers and the empty name are left out.
    std::vector<std::string> Around(std::string_view name, std::size_t most) const;
    /// The first titles in which number, digits without zeros in front, stands as a
    /// whole number. Walks through all titles.
    std::vector<std::string> TitlesWithNumber(std::string_view number, std::size_t most) const;

private:
    /// A name of a record: a part of text_.
    struct Entry {
        std::uint64_t offset : 46;
        std::uint64_t length : 18; ///< at most kLongestLine
        std::uint64_t record : 56;
        std::uint64_t kind : 7;
        std::uint64_t isCut : 1;
    };
    /// The entries of one name lie one behind the other, by record.
    struct Group {
        std::uint64_t begin : 61;
        std::uint64_t titles : 2;   ///< records whose whole title it is; 2: or more
        std::uint64_t hasUncut : 1; ///< not all are cut scan numbers
    };
    /// What the header line of a record sets, and where.
    template <typename Value>
    struct Header {
        Value value{};
        std::uint64_t line = 0;
    };

    void TakeBegin(std::uint64_t line);
    void TakeTitle(const std::string& line);
    void TakeHeader(const FileLines::Line& line);
    void CloseHeaders();
    void Add(NameKind kind, std::uint64_t offset, std::size_t length, bool isCut);
    void MakeGroups();

    std::string_view TextOf(const Entry& entry) const;
    std::string_view NameOf(std::size_t group) const;
    std::size_t EndOf(std::size_t group) const;
    bool IsAmbiguous(std::size_t group) const;
    bool IsOfUse(std::size_t group) const;
    std::size_t LowerBound(std::string_view name) const;
    std::optional<std::size_t> GroupOf(std::string_view name) const;

    std::string text_;
    std::vector<Record> records_;
    std::vector<Entry> entries_;
    std::vector<Group> groups_;

    // While lines are taken.
    bool isAtEnd_ = false; ///< a line was too long: nothing behind it is indexed
    bool waitsForTitle_ = false;
    std::size_t firstOpen_ = 0; ///< records from here on still wait for their peaks
    Header<double> mz_;
    Header<std::uint64_t> charge_;
};

} // namespace pelgrin

#endif // PELGRIN_MGFINDEX_H
