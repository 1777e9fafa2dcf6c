#include "Print/PdfFile.h"

#include "Print/WrittenCharacters.h"

#include <qpdf/qpdf-c.h>

#include <cstdlib>
#include <map>
#include <memory>
#include <string>

namespace vantroque::PdfFile {

namespace {

/// A document in the memory of the library. Its objects are numbers, which hold while it lives.
/// What fails in it is remembered by it.
class Pdf {
public:
    Pdf() : m_data(qpdf_init(), [](qpdf_data data) { qpdf_cleanup(&data); })
    {
        qpdf_silence_errors(get());
        qpdf_set_suppress_warnings(get(), QPDF_TRUE);
    }

    qpdf_data get() const { return m_data.get(); }

    /// Fails with what has gone wrong since the last time, if anything has.
    Result<void> outcome() const
    {
        if (!qpdf_has_error(get()))
            return {};
        return failure(QString::fromUtf8(qpdf_get_error_full_text(get(), qpdf_get_error(get()))));
    }

    qpdf_oh name(const std::string& text) const { return qpdf_oh_new_name(get(), text.c_str()); }
    qpdf_oh dictionary() const
    {
        return qpdf_make_indirect_object(get(), qpdf_oh_new_dictionary(get()));
    }
    void set(qpdf_oh dictionary, const char* key, qpdf_oh value) const
    {
        qpdf_oh_replace_key(get(), dictionary, key, value);
    }

private:
    std::shared_ptr<std::remove_pointer_t<qpdf_data>> m_data;
};

/// What a click on a bookmark shows.
qpdf_oh destination(const Pdf& pdf, std::size_t page)
{
    const qpdf_oh place = qpdf_oh_new_array(pdf.get());
    qpdf_oh_append_item(pdf.get(), place, qpdf_get_page_n(pdf.get(), page));
    qpdf_oh_append_item(pdf.get(), place, pdf.name("/Fit"));
    return place;
}

/// The document outline of ISO 32000-1, 12.3.3: a list of items, each of which knows its
/// neighbours.
void addBookmarks(const Pdf& pdf, const std::vector<Bookmark>& bookmarks)
{
    const qpdf_oh outline = pdf.dictionary();
    std::vector<qpdf_oh> items;
    for (const Bookmark& bookmark : bookmarks) {
        const qpdf_oh item = pdf.dictionary();
        pdf.set(item, "/Title",
                qpdf_oh_new_unicode_string(pdf.get(), bookmark.title.toUtf8().constData()));
        pdf.set(item, "/Parent", outline);
        pdf.set(item, "/Dest", destination(pdf, bookmark.page));
        if (!items.empty()) {
            pdf.set(item, "/Prev", items.back());
            pdf.set(items.back(), "/Next", item);
        }
        items.push_back(item);
    }
    if (items.empty())
        return;
    pdf.set(outline, "/Type", pdf.name("/Outlines"));
    pdf.set(outline, "/First", items.front());
    pdf.set(outline, "/Last", items.back());
    pdf.set(outline, "/Count", qpdf_oh_new_integer(pdf.get(), std::ssize(items)));
    const qpdf_oh root = qpdf_get_root(pdf.get());
    pdf.set(root, "/Outlines", outline);
    if (items.size() > 1)
        pdf.set(root, "/PageMode", pdf.name("/UseOutlines"));
}

void showTitle(const Pdf& pdf)
{
    const qpdf_oh preferences = qpdf_oh_new_dictionary(pdf.get());
    pdf.set(preferences, "/DisplayDocTitle", qpdf_oh_new_bool(pdf.get(), QPDF_TRUE));
    const qpdf_oh root = qpdf_get_root(pdf.get());
    pdf.set(root, "/ViewerPreferences", preferences);
    pdf.set(root, "/Lang", qpdf_oh_new_string(pdf.get(), "en"));
}

/// Six letters, other ones for each number.
std::string subsetTag(std::size_t number)
{
    constexpr std::size_t letters = 26;
    std::string tag = "AAAAAA";
    for (auto letter = tag.rbegin(); letter != tag.rend(); ++letter, number /= letters)
        *letter = static_cast<char>('A' + number % letters);
    return tag;
}

/// Qt embeds the glyphs that are used and names the font as if it were whole, so that a reader
/// could take an installed one in its place. Names of subsets begin with a tag (ISO 32000-1,
/// 9.6.4).
class Subsets {
public:
    explicit Subsets(const Pdf& pdf) : m_pdf(pdf) {}

    void name(qpdf_oh font, const char* key)
    {
        const std::string name =
            qpdf_oh_get_name(m_pdf.get(), qpdf_oh_get_key(m_pdf.get(), font, key));
        const auto [tagged, isNew] = m_tagged.try_emplace(name);
        if (isNew)
            tagged->second = "/" + subsetTag(m_tagged.size() - 1) + "+" + name.substr(1);
        m_pdf.set(font, key, m_pdf.name(tagged->second));
    }

private:
    const Pdf& m_pdf;
    std::map<std::string, std::string> m_tagged;
};

void correctCharacters(const Pdf& pdf, qpdf_oh table)
{
    QPDF_BOOL isPlain = QPDF_FALSE;
    unsigned char* bytes = nullptr;
    std::size_t count = 0;
    qpdf_oh_get_stream_data(pdf.get(), table, qpdf_dl_all, &isPlain, &bytes, &count);
    const std::unique_ptr<unsigned char, decltype(&std::free)> owner(bytes, &std::free);
    if (bytes == nullptr || isPlain == QPDF_FALSE)
        return;
    const QByteArray corrected = WrittenCharacters::corrected(
        QByteArray(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(count)));
    const qpdf_oh none = qpdf_oh_new_null(pdf.get());
    qpdf_oh_replace_stream_data(pdf.get(), table,
                                reinterpret_cast<const unsigned char*>(corrected.constData()),
                                static_cast<std::size_t>(corrected.size()), none, none);
}

void mendFonts(const Pdf& pdf)
{
    const qpdf_data data = pdf.get();
    const int count =
        qpdf_oh_get_int_value_as_int(data, qpdf_oh_get_key(data, qpdf_get_trailer(data), "/Size"));
    Subsets subsets(pdf);
    for (int number = 1; number < count; ++number) {
        const qpdf_oh object = qpdf_get_object_by_id(data, number, 0);
        if (qpdf_oh_is_dictionary(data, object)) {
            for (const char* key : {"/BaseFont", "/FontName"})
                if (qpdf_oh_has_key(data, object, key))
                    subsets.name(object, key);
            if (qpdf_oh_has_key(data, object, "/ToUnicode"))
                correctCharacters(pdf, qpdf_oh_get_key(data, object, "/ToUnicode"));
        }
        qpdf_oh_release(data, object);
    }
}

} // namespace

Result<void> finish(const std::filesystem::path& written, const std::filesystem::path& finished,
                    const std::vector<Bookmark>& bookmarks)
{
    const Pdf pdf;
    qpdf_read(pdf.get(), written.c_str(), nullptr);
    TRY(pdf.outcome());
    mendFonts(pdf);
    addBookmarks(pdf, bookmarks);
    showTitle(pdf);
    TRY(pdf.outcome());
    qpdf_init_write(pdf.get(), finished.c_str());
    TRY(pdf.outcome());
    qpdf_set_object_stream_mode(pdf.get(), qpdf_o_generate); // a third smaller
    qpdf_write(pdf.get());
    return pdf.outcome();
}

} // namespace vantroque::PdfFile
