#include "run/Report.h"

#include <algorithm>
#include <iterator>

#include <fmt/format.h>

#include "common/Terminal.h"
#include "common/Words.h"
#include "run/JoinText.h"

namespace pelgrin {

using Vorlan::Peak;

namespace {

constexpr std::size_t kBest = 5;
constexpr std::size_t kIonsWidth = 70;

template <typename... Arguments>
void Add(std::string& text, fmt::format_string<Arguments...> format, Arguments&&... arguments)
{
    fmt::format_to(std::back_inserter(text), format, std::forward<Arguments>(arguments)...);
}

bool IsBetter(const Annotation& a, const Annotation& b)
{
    const double left = a.bonds.Value();
    const double right = b.bonds.Value();
    return left != right ? left > right : a.bonds.matched > b.bonds.matched;
}

/// " (demo.mgf, 3 more)": the details of a reason, kept short.
std::string DetailsText(const std::map<std::string, std::uint64_t>& details)
{
    if (details.empty()) {
        return {};
    }
    std::string text = " (" + OneLine(Clip(details.begin()->first, 40));
    if (details.size() > 1) {
        Add(text, ", {} more", details.size() - 1);
    }
    return text + ")";
}

void AddFdr(std::string& text, const Parameters& parameters, const Counts& counts)
{
    if (!parameters.fdr) {
        return;
    }
    Add(text, "  FDR control{:>9}   matches leave the run\n", counts.LeftByFdr());
    Add(text, "             {:>9}   decoys\n", counts.decoys);
    Add(text, "             {:>9}   with a q-value above {}\n", counts.aboveThreshold,
        parameters.fdr->threshold);
    for (const auto& [count, reason] :
         {std::pair<std::uint64_t, const char*>{counts.withoutProteins, "without proteins"},
          {counts.scoreNotANumber, "with a score that is no number"}}) {
        if (count > 0) {
            Add(text, "             {:>9}   {}\n", count, reason);
        }
    }
}

/// Where a mass that is missing could have been.
const char* PlaceOfMasses(Reason reason, const Parameters& parameters)
{
    if (reason != Reason::ModificationWithoutMass) {
        return "";
    }
    return parameters.lookup ? " (not in the database)" : " (--mod)";
}

/// "2 files", "1 folder", "1 file and 2 folders".
std::string FilesText(std::size_t files, std::size_t folders)
{
    std::string text;
    for (const auto& [count, name] :
         {std::pair<std::size_t, const char*>{files, "file"}, {folders, "folder"}}) {
        if (count > 0) {
            Add(text, "{}{} {}{}", text.empty() ? "" : " and ", count, name, count == 1 ? "" : "s");
        }
    }
    return text;
}

void AddSpectra(std::string& text, const SpectraPool& spectra)
{
    std::uint64_t total = 0;
    std::size_t folders = 0;
    for (const SpectraFile& file : spectra.Files()) {
        total += file.spectra;
        folders += file.format == Vorlan::DatasetType::Dta ? 1 : 0;
    }
    Add(text, "Spectra      {:>9}   in {}\n", total,
        FilesText(spectra.Files().size() - folders, folders));
}

void AddRecords(std::string& text, const Parameters& parameters, const SpectraPool& spectra,
                const Counts& counts)
{
    AddSpectra(text, spectra);
    Add(text, "Matches read {:>9}{}\n", counts.read,
        parameters.psms.size() == 1 ? std::string()
                                    : fmt::format("   in {} files", parameters.psms.size()));
    AddFdr(text, parameters, counts);
    Add(text, "  joined     {:>9}   with their spectra, by name\n", counts.Joined());
    Add(text, "  annotated  {:>9}\n", counts.annotated);
    Add(text, "  not used   {:>9}\n", counts.NotJoined() + counts.Skipped());
    for (std::size_t i = 0; i < kReasons; ++i) {
        if (counts.notUsed[i] > 0) {
            const auto reason = static_cast<Reason>(i);
            Add(text, "             {:>9}   {}{}{}\n", counts.notUsed[i], TextOf(reason),
                PlaceOfMasses(reason, parameters), DetailsText(counts.details[i]));
        }
    }
}

void AddIons(std::string& text, const Parameters& parameters, const Counts& counts)
{
    Add(text, "\nIons                      asked     found    share\n");
    for (const auto& [status, name] :
         {std::pair<Peak::EPeakHitStatus, const char*>{Peak::UNSHIFT, ""},
          {Peak::SHIFT, " + mass shift"}}) {
        for (const Peak::EIonType ion : parameters.ions) {
            const Share& share = counts.Ions(ion, status);
            if (status == Peak::UNSHIFT || share.asked > 0) {
                Add(text, "  {:<20}{:>9} {:>9}  {:>5.1f} %\n",
                    fmt::format("{}{}", LetterOf(ion), name), share.asked, share.matched,
                    100 * share.Value());
            }
        }
    }
    Add(text, "Bonds with an ion     {:>9} {:>9}  {:>5.1f} %\n", counts.fragments.asked,
        counts.fragments.matched, 100 * counts.fragments.Value());
    Add(text, "Peaks with an ion     {:>9} {:>9}  {:>5.1f} %\n", counts.peaks.asked,
        counts.peaks.matched, 100 * counts.peaks.Value());
}

void AddBest(std::string& text, const BestRecords& best)
{
    if (best.Entries().empty()) {
        return;
    }
    Add(text, "\nBest annotated peptides (* with the mass shift, ++ charge 2)\n");
    for (const BestRecords::Entry& entry : best.Entries()) {
        Add(text, "  {:>5.1f} %  {} {}+{}\n", 100 * entry.annotation.bonds.Value(),
            OneLine(entry.sequence.substr(0, 60)), entry.charge,
            entry.massShift == 0.0 ? "" : fmt::format(", mass shift {:+.4f}", entry.massShift));
        std::string ions = IonsText(entry.annotation);
        if (ions.size() > kIonsWidth) {
            ions.resize(std::min(ions.rfind(' ', kIonsWidth), kIonsWidth)); // one may be longer
            ions += " ...";
        }
        Add(text, "           {}\n", ions);
    }
}

} // namespace

void BestRecords::Offer(const Vorlan::PeptideIdentification& record, const FragmentPlan& plan,
                        const Annotation& annotation)
{
    if (annotation.matches.empty()
        || (entries_.size() == kBest && !IsBetter(annotation, entries_.back().annotation))) {
        return;
    }
    const auto same = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
        return entry.sequence == record.strSequence;
    });
    if (same != entries_.end()) {
        if (!IsBetter(annotation, same->annotation)) {
            return;
        }
        entries_.erase(same);
    }
    const auto place = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
        return IsBetter(annotation, entry.annotation);
    });
    entries_.insert(place,
                    {record.strSequence, record.nCharge, plan.massShift.value_or(0.0), annotation});
    if (entries_.size() > kBest) {
        entries_.pop_back();
    }
}

std::string IonsText(const Annotation& annotation)
{
    std::string text;
    for (const IonMatch& match : annotation.matches) {
        const Peak::MatchRes& ion = match.fragment.ion;
        text += text.empty() ? "" : " ";
        Add(text, "{}{}{}", LetterOf(ion.eIonType), ion.nIonIndex,
            ion.eHitStatus == Peak::SHIFT ? "*" : "");
        if (ion.nCharge > 1) {
            text.append(static_cast<std::size_t>(ion.nCharge), '+');
        }
    }
    return text;
}

std::string ReportOf(const Parameters& parameters, const SpectraPool& spectra,
                     const RunResults& results, const BestRecords& best)
{
    const Counts& counts = results.counts;
    std::string text;
    AddRecords(text, parameters, spectra, counts);
    if (results.join) {
        text += ShortTextOf(*results.join);
    }
    if (results.proteins) {
        text +=
            results.proteins->Text(MappedProteins::Details::Few) + results.proteins->SitesText();
    }
    AddIons(text, parameters, counts);
    AddBest(text, best);
    Add(text,
        "\nFiles in {}\n"
        "  annotations.tsv   every ion that was found, with its peak\n"
        "  results.txt       the matches {}, as a native table\n"
        "  matched.mgf       the spectra that were joined\n"
        "{}"
        "  rejects.tsv       records and files that could not be read\n"
        "  ledger.json       what the inputs hold, what was kept, and where the rest is\n"
        "  summary.json      all counts\n"
        "  run.json          inputs with their SHA-256, parameters, versions and times\n",
        OneLine(parameters.out), parameters.fdr ? "that FDR control left" : "read",
        results.proteins ? "  proteins.tsv      the proteins that hold the peptides\n" : "");
    return text;
}

} // namespace pelgrin
