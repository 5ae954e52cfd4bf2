#pragma once

#include "host/FrameworkCore/AppConfig/TextInterface.h"

#include <functional>
#include <memory>

namespace Repository {

class AttributeStore;
class Backend;

// The texts of the backends of a store. Any thread.
class BackendTexts : public FrameworkCore::AppConfig::Interfaces::TextInterface
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using TextPlace = FrameworkCore::AppConfig::Interfaces::TextPlace;
    using BackendText = FrameworkCore::AppConfig::Interfaces::BackendText;

    explicit BackendTexts(std::shared_ptr<AttributeStore> store);

    Outcome locate(const QString& path, TextPlace& place) const override;
    Outcome findAt(const QString& backend, int line, int column, QString& path) const override;
    Outcome getText(const QString& backend, BackendText& text) const override;
    quint64 getRevision(const QString& backend) const override;

private:
    Outcome ask(const QString& backend, const std::function<Outcome(const Backend&)>& question) const;

    std::shared_ptr<AttributeStore> store;
};

} // namespace Repository
