#include "isolation/SpectrumServer.h"

#include <utility>

#include <fmt/format.h>

#include "common/Terminal.h"
#include "isolation/RecordBytes.h"

namespace pelgrin {

namespace {

enum Told : std::uint32_t { Question, FoundIt, NoSuchName };

/// Answers from a pool of the library that has this dataset alone.
SpectrumServer::Answer OpenDataset(const Vorlan::DatasetSource& source)
{
    const auto pool = std::make_shared<Vorlan::DatasetIOPool>();
    pool->InitLoad({source});
    const std::string dataset = source.strSecond;
    return [pool, dataset](const std::string& name) -> std::optional<Vorlan::Spectrum> {
        std::vector<Vorlan::Spectrum> loaded;
        if (!pool->bHasSpectrum(dataset, name) || !pool->bLoadOneSpectrum(dataset, name, loaded)
            || loaded.empty()) {
            return std::nullopt;
        }
        return std::move(loaded.back());
    };
}

/// The life of the child.
void Serve(const SpectrumServer::Open& open, Channel& way)
{
    const SpectrumServer::Answer answer = open();
    Channel::Message question;
    while (way.Receive(question)) {
        const std::optional<Vorlan::Spectrum> spectrum = answer(question.bytes);
        if (spectrum) {
            way.Send(FoundIt, BytesOf(*spectrum));
        } else {
            way.Send(NoSuchName);
        }
    }
}

} // namespace

SpectrumServer::SpectrumServer(const Vorlan::DatasetSource& source)
    : SpectrumServer(Open([source] { return OpenDataset(source); }))
{
}

SpectrumServer::SpectrumServer(Open open) : open_(std::move(open)) {}

SpectrumServer::Reply SpectrumServer::Load(const std::string& name, Vorlan::Spectrum& spectrum)
{
    Channel::Message reply;
    if (!Ask(name, reply) && !Ask(name, reply)) {
        return Reply::ReaderEnded;
    }
    if (reply.type != FoundIt) {
        return Reply::Unknown;
    }
    spectrum = SpectrumOf(reply.bytes);
    return Reply::Found;
}

bool SpectrumServer::Ask(const std::string& name, Channel::Message& reply)
{
    if (!child_) {
        child_ = std::make_unique<Child>([this](Channel& way) { Serve(open_, way); });
    }
    if (child_->Way().Send(Question, name) && child_->Way().Receive(reply)) {
        return true;
    }
    const ChildEnd end = child_->Wait();
    const std::string printed = WithoutProgress(end.printed);
    ends_.push_back(fmt::format("the reader {}{}{}", end.isWell ? "ended" : end.text,
                                printed.empty() ? "" : ": ", OneLine(printed)));
    child_.reset();
    return false;
}

} // namespace pelgrin
