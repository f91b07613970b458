#include "LedgerCore/Client/Store/EntryDrafts.h"

#include <algorithm>
#include <utility>

#include <QCoro/QCoroSignal>
#include <QUuid>

#include "LedgerCore/Client/Store/LedgerStore.h"

namespace {

constexpr std::chrono::milliseconds atOnce{0};

const std::string& keyOf(const EntryDraft& draft)
{
    return draft.entry.idempotencyKey;
}

const APIError* refusalIn(const Result<DraftKept>& reply)
{
    return reply ? nullptr : std::get_if<APIError>(&reply.error());
}

/// Whether the same may be kept when it is tried again.
bool isWorthAnotherTry(const Failure& failure)
{
    return fateOf(failure) != CommandFate::refused;
}

}

EntryDrafts::EntryDrafts(LedgerStore& store)
    : m_store{store}, m_writer{QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString()}
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &EntryDrafts::tell);
    connect(&store, &LedgerStore::snapshotChanged, this, &EntryDrafts::adoptSnapshot);
    connect(&store, &LedgerStore::lastRefreshChanged, this, &EntryDrafts::load);
    adoptSnapshot();
}

EntryDrafts::Shelf* EntryDrafts::shelf()
{
    return m_whose ? &m_shelves[*m_whose] : nullptr;
}

const EntryDrafts::Shelf* EntryDrafts::shelf() const
{
    const auto found = m_whose ? m_shelves.find(*m_whose) : m_shelves.end();
    return found == m_shelves.end() ? nullptr : &found->second;
}

bool EntryDrafts::isKeptBy(const Shelf& shelf) const
{
    return m_store.keepsMoreThanBooks() && !shelf.isRefused;
}

void EntryDrafts::adoptSnapshot()
{
    auto now = m_store.signedIn();
    if (now == m_whose)
        return;
    m_whose = std::move(now);
    m_timer.stop();
    if (auto* here = shelf())
        here->isLoaded = false; // others may have left something meanwhile
    setBehind(false);
    Q_EMIT changed();
    load();
    tell(); // what the end of a session left untold
}

void EntryDrafts::load()
{
    const auto* here = shelf();
    if (!here || !m_whose || here->isLoaded || m_isLoading || !isKeptBy(*here))
        return;
    m_isLoading = true;
    QCoro::connect(m_store.loadDrafts(), this, [this, whose = *m_whose](const Result<EntryDraftList>& loaded) {
        m_isLoading = false;
        if (loaded)
            adopt(whose, *loaded);
        else if (const auto* error = std::get_if<APIError>(&loaded.error()); error && error->status == 404)
            m_shelves[whose].isRefused = true;
        if (m_whose != whose)
            load();
    });
}

void EntryDrafts::adopt(const MemberIdentity& whose, const EntryDraftList& loaded)
{
    auto& here = m_shelves[whose];
    here.isLoaded = true;
    here.isServed = true;
    here.left.clear();
    bool isNews = false;
    for (const auto& each : loaded.drafts) {
        here.known.insert(keyOf(each));
        if (each.writer == m_writer || here.wishes.contains(keyOf(each)))
            continue;
        here.takenFrom[keyOf(each)] = each.writer;
        if (!each.sent)
            here.left.push_back(each);
        else if (m_whose == whose)
            m_store.keepEntry(*each.sent, true, each.changedAt);
        isNews = true;
    }
    if (!isNews || m_whose != whose)
        return;
    Q_EMIT changed();
    Q_EMIT arrived();
}

DraftKeep EntryDrafts::keeping(const Shelf& shelf, const EntryDraft& draft) const
{
    return {.entry = draft.entry,
            .locale = draft.locale,
            .sent = draft.sent,
            .writer = m_writer,
            .takenFrom = takenFrom(shelf, keyOf(draft))};
}

/// The program whose draft is in sight here, until the service has this one as its writer.
std::optional<std::string> EntryDrafts::takenFrom(const Shelf& shelf, const std::string& key)
{
    const auto taken = shelf.takenFrom.find(key);
    return taken == shelf.takenFrom.end() ? std::nullopt : std::optional{taken->second};
}

void EntryDrafts::keep(TransactionDraft entry, std::string locale)
{
    auto* const here = shelf();
    if (!here)
        return;
    const EntryDraft draft{
        .entry = std::move(entry), .locale = std::move(locale), .sent = {}, .writer = m_writer, .changedAt = {}};
    const bool isFirst = !here->own;
    if (here->own && keyOf(*here->own) != keyOf(draft))
        forget(*here, keyOf(*here->own));
    if (here->own == draft)
        return;
    here->own = draft;
    here->isLetGo = false;
    const auto taken = std::erase_if(here->left, [&](const EntryDraft& each) { return keyOf(each) == keyOf(draft); });
    wish(*here, keyOf(draft), keeping(*here, draft), m_patience.typing);
    if (isFirst || taken > 0)
        Q_EMIT changed();
}

void EntryDrafts::keepSending(TransactionDraft entry, std::string locale, TransactionInput input)
{
    auto* const here = shelf();
    if (!here)
        return;
    if (entry.idempotencyKey != input.idempotencyKey)
        forget(*here, entry.idempotencyKey);
    entry.idempotencyKey = input.idempotencyKey;
    const auto key = input.idempotencyKey;
    if (here->own && keyOf(*here->own) != key)
        forget(*here, keyOf(*here->own));
    const bool hadOwn = std::exchange(here->own, std::nullopt).has_value();
    std::erase_if(here->left, [&](const EntryDraft& each) { return keyOf(each) == key; });
    const EntryDraft draft{.entry = std::move(entry),
                           .locale = std::move(locale),
                           .sent = std::move(input),
                           .writer = m_writer,
                           .changedAt = {}};
    wish(*here, key, keeping(*here, draft), atOnce);
    if (hadOwn)
        Q_EMIT changed();
}

void EntryDrafts::settle(const std::string& key)
{
    auto* const here = shelf();
    if (!here)
        return;
    here->wishes.erase(key);
    here->known.erase(key);
    here->takenFrom.erase(key);
    const auto left = std::erase_if(here->left, [&](const EntryDraft& each) { return keyOf(each) == key; });
    const bool isOwn = here->own && keyOf(*here->own) == key;
    if (isOwn)
        here->own.reset();
    if (isOwn || left > 0)
        Q_EMIT changed();
}

void EntryDrafts::discard(const std::string& key)
{
    auto* const here = shelf();
    if (!here)
        return;
    const bool wasKnown = here->known.contains(key);
    const Forgotten forgotten{takenFrom(*here, key)};
    settle(key);
    if (wasKnown)
        wish(*here, key, forgotten, atOnce);
}

/// The same without a word.
void EntryDrafts::forget(Shelf& shelf, const std::string& key)
{
    shelf.wishes.erase(key);
    if (shelf.known.contains(key))
        wish(shelf, key, Forgotten{takenFrom(shelf, key)}, m_patience.typing);
}

void EntryDrafts::takeOver(const std::string& key)
{
    auto* const here = shelf();
    if (!here)
        return;
    here->isLetGo = false;
    const auto found = std::ranges::find(here->left, key, keyOf);
    if (found == here->left.end())
        return;
    auto draft = std::move(*found);
    here->left.erase(found);
    if (here->own && keyOf(*here->own) != key)
        forget(*here, keyOf(*here->own));
    draft.writer = m_writer;
    here->own = std::move(draft);
    wish(*here, key, keeping(*here, *here->own), atOnce);
    Q_EMIT changed();
}

void EntryDrafts::letGo()
{
    if (auto* const here = shelf())
        here->isLetGo = true;
}

std::optional<EntryDraft> EntryDrafts::own() const
{
    const auto* here = shelf();
    return here ? here->own : std::nullopt;
}

bool EntryDrafts::hasBegun(const MemberIdentity& member) const
{
    const auto found = m_shelves.find(member);
    return found != m_shelves.end() && found->second.own;
}

std::optional<EntryDraft> EntryDrafts::left() const
{
    const auto* here = shelf();
    return here && !here->left.empty() ? std::optional{here->left.back()} : std::nullopt;
}

void EntryDrafts::wish(Shelf& shelf, const std::string& key, Wish wish, std::chrono::milliseconds delay)
{
    if (!isKeptBy(shelf))
        return;
    shelf.wishes.insert_or_assign(key, std::move(wish));
    if (delay == atOnce)
        tell();
    else if (!m_timer.isActive()) // counted from the first change, so that steady typing is kept too
        m_timer.start(delay);
}

/// One after the other: what was said last about a draft must arrive last.
void EntryDrafts::tell()
{
    auto* const here = shelf();
    if (m_isTelling || !here || !m_whose || here->wishes.empty() || !isKeptBy(*here))
        return;
    m_isTelling = true;
    auto node = here->wishes.extract(here->wishes.begin());
    const auto& key = node.key();
    const auto wish = std::move(node.mapped());
    const auto whose = *m_whose;
    if (const auto* draft = std::get_if<DraftKeep>(&wish)) {
        here->known.insert(key);
        QCoro::connect(m_store.keepDraft(*draft), this,
                       [this, whose, key, wish](const Result<DraftKept>& reply) { told(whose, key, wish, reply); });
        return;
    }
    here->known.erase(key);
    const DraftDiscard by{.writer = m_writer, .takenFrom = std::get<Forgotten>(wish).takenFrom};
    QCoro::connect(m_store.discardDraft(key, by), this, [this, whose, key, wish](const Result<OK>& reply) {
        told(whose, key, wish, reply ? Result<DraftKept>{} : std::unexpected(reply.error()));
    });
}

void EntryDrafts::told(const MemberIdentity& whose, const std::string& key, const Wish& wish,
                       const Result<DraftKept>& reply)
{
    m_isTelling = false;
    auto& here = m_shelves[whose];
    const auto* refusal = refusalIn(reply);
    if (reply) {
        setBehind(false);
        here.takenFrom.erase(key);
        if (reply->recordedEntryID && whose == m_whose)
            settle(key);
    } else if (refusal && refusal->status == 404 && !here.isServed) {
        here.isRefused = true;
        here.wishes.clear();
    } else if (refusal && refusal->status == 409 && std::holds_alternative<Forgotten>(wish)) {
        here.takenFrom.erase(key); // given up here, and gone on with elsewhere
    } else if (refusal && refusal->status == 409) {
        here.known.erase(key);
        here.wishes.erase(key);
        if (here.own && keyOf(*here.own) == key)
            here.own.reset();
        Q_EMIT changed();
        Q_EMIT takenOver(key);
    } else if (isWorthAnotherTry(reply.error())) {
        putOff(here, key, wish);
        Q_EMIT idle();
        return;
    } else {
        setBehind(std::holds_alternative<DraftKeep>(wish));
    }
    tell();
    if (!m_isTelling)
        Q_EMIT idle();
}

void EntryDrafts::putOff(Shelf& shelf, const std::string& key, const Wish& wish)
{
    if (std::holds_alternative<Forgotten>(wish))
        shelf.known.insert(key);
    else if (!shelf.known.contains(key))
        return;                          // settled or given up meanwhile
    shelf.wishes.try_emplace(key, wish); // unless something newer is to be said
    if (&shelf == this->shelf())
        setBehind(std::ranges::any_of(shelf.wishes,
                                      [](const auto& each) { return std::holds_alternative<DraftKeep>(each.second); }));
    m_timer.start(m_patience.failure);
}

void EntryDrafts::setBehind(bool isBehind)
{
    if (std::exchange(m_isBehind, isBehind) != isBehind)
        Q_EMIT isBehindChanged();
}

bool EntryDrafts::wouldLose() const
{
    return std::ranges::any_of(m_shelves, [this](const auto& each) {
        const auto& [whose, here] = each;
        if (here.own && !here.isLetGo && !isSafe(whose, keyOf(*here.own)))
            return true;
        const bool isUntold = std::ranges::any_of(
            here.wishes, [](const auto& wish) { return std::holds_alternative<DraftKeep>(wish.second); });
        return isUntold && (whose != m_whose || m_isBehind);
    });
}

bool EntryDrafts::isSafe(const MemberIdentity& whose, const std::string& key) const
{
    const auto found = m_shelves.find(whose);
    return found != m_shelves.end() && !found->second.isRefused &&
           (found->second.known.contains(key) || found->second.wishes.contains(key));
}

QCoro::Task<void> EntryDrafts::flush()
{
    tell();
    if (m_isTelling) {
        auto waiting = qCoro(this, &EntryDrafts::idle);
        co_await waiting;
    }
}
