// The spectra of one dataset, read by the library in a child process.
#ifndef PELGRIN_SPECTRUMSERVER_H
#define PELGRIN_SPECTRUMSERVER_H

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "SpectraIO.h"
#include "isolation/Child.h"

namespace pelgrin {

/// The child starts when it is asked first. One that ends while it is asked is
/// started again, once for each question.
class SpectrumServer {
public:
    /// Answers in the child; gives nothing for a name that the dataset does not have.
    using Answer = std::function<std::optional<Vorlan::Spectrum>(const std::string& name)>;
    /// Opens the dataset in the child. May throw what the library throws.
    using Open = std::function<Answer()>;

    explicit SpectrumServer(const Vorlan::DatasetSource& source);
    explicit SpectrumServer(Open open);
    SpectrumServer(SpectrumServer&&) = default;

    enum class Reply { Found, Unknown, ReaderEnded };
    /// The spectrum of a name; spectrum is filled when it was Found.
    Reply Load(const std::string& name, Vorlan::Spectrum& spectrum);

    /// How the child ended, for each time that it did while it was asked.
    const std::vector<std::string>& Ends() const { return ends_; }

private:
    bool Ask(const std::string& name, Channel::Message& reply);

    Open open_;
    std::unique_ptr<Child> child_;
    std::vector<std::string> ends_;
};

} // namespace pelgrin

#endif // PELGRIN_SPECTRUMSERVER_H
