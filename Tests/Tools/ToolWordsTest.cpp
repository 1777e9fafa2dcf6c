#include "Tools/ToolWords.h"

#include "Tools/FFTool.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;

QString told(const QString& words)
{
    FFToolError error;
    error.tool = u"ffmpeg"_s;
    error.status = 1;
    error.words = words;
    return error.description();
}

TEST(ToolWords, AddressesOfMemoryAreLeftOutAndLineEndsKept)
{
    EXPECT_EQ(told(u"[h264 @ 0x55d0c8a1] no frame!\n[AVFilterGraph @ 0x7f] odd\nend\n"_s),
              u"ffmpeg exited with status 1: no frame!\nodd\nend\n"_s);
    EXPECT_EQ(told(u"[mov,mp4,m4a @ 0x1] [ffmpeg] [x @ y]\n"_s),
              u"ffmpeg exited with status 1: [ffmpeg] [x @ y]\n"_s);
}

TEST(ToolWords, OfALongLogTheFirstLineThatMattersComesFirst)
{
    const QString figures = u"  Duration: unknown\nframe=    1\n[Parsed @ 0x1] YMIN=16\n"_s;
    const QString tail = QString(399, u'z') + u'\n';
    EXPECT_EQ(told(figures + u"[h264 @ 0x2] Invalid NAL unit size\nmore errors\n"_s + tail),
              u"ffmpeg exited with status 1: Invalid NAL unit size\n"_s + tail);
    // Nothing matters, or it is in sight.
    EXPECT_EQ(told(figures + tail), u"ffmpeg exited with status 1: "_s + tail);
    const QString end = QString(380, u'z') + u"\nan error\n"_s;
    EXPECT_EQ(told(figures + end).count(u"an error"_s), 1);
}

TEST(ToolWords, KnownCausesAreToldInAPlainSentenceAheadOfTheWords)
{
    const std::vector<std::pair<QString, QString>> known{
        {u"[h264 @ 0x1] get_buffer() failed\nError: Cannot allocate memory\n"_s,
         u"There was not enough memory to decode this file."_s},
        {u"pthread_create failed: Resource temporarily unavailable. Try to increase `ulimit -v`.\n"_s,
         u"There was not enough memory to decode this file."_s},
        {u"ffmpeg: error while loading shared libraries: libx.so: failed to map segment from shared object\n"_s,
         u"There was not enough memory to decode this file."_s},
        {u"[rawvideo @ 0x1] ff_frame_thread_encoder_init failed\nConversion failed!\n"_s,
         u"There was not enough memory to decode this file."_s},
        {u"Error while opening decoder : Resource temporarily unavailable\n"_s,
         u"There was not enough memory to decode this file."_s},
        {u"[h264 @ 0x1] Could not allocate memory\n"_s,
         u"There was not enough memory to decode this file."_s},
        {u"terminate called after throwing an instance of 'std::bad_alloc'\n"_s,
         u"There was not enough memory to decode this file."_s},
        {u"/a.mp4: Too many open files\n"_s, u"Too many files are open."_s},
        {u"av_interleaved_write_frame(): No space left on device\n"_s, u"The disk is full."_s},
        {u"/x.raw: File too large\n"_s, u"A file would grow larger than is allowed here."_s},
        {u"/a.mp4: Permission denied\n"_s, u"There is no permission to open it."_s},
        {u"[mov @ 0x1] moov atom not found\n/a.mp4: Invalid data found when processing input\n"_s,
         u"The index is missing: the file was cut off, or is no media file."_s},
        {u"[mxf @ 0x1] error reading header metadata\n/a.mxf: Invalid data found when processing input\n"_s,
         u"Its header or footer cannot be read: the file was cut off, or is damaged."_s},
        {u"[mov @ 0x1] error reading header\n/a.mp4: End of file\n"_s,
         u"Its header or footer cannot be read: the file was cut off, or is damaged."_s},
        {u"Decoder (codec none) not found for input stream #0:0\n"_s,
         u"Nothing in it can be decoded."_s},
        {u"CTTS invalid\nOutput file is empty, nothing was encoded (check -ss / -t)\n"_s,
         u"Nothing in it can be decoded."_s},
        {u"/a.mkv: Invalid data found when processing input\n"_s,
         u"Nothing in it can be decoded."_s},
    };
    for (const auto& [words, sentence] : known)
        EXPECT_EQ(told(words),
                  sentence + u"\nffmpeg exited with status 1: "_s + ToolWords::shown(words));
}

TEST(ToolWords, OtherWordsStandAlone)
{
    for (const QString& words :
         {u"/nowhere.mp4: No such file or directory\n"_s, u"cannot decode\n"_s, QString()})
        EXPECT_EQ(told(words), u"ffmpeg exited with status 1: "_s + words);
}

TEST(ToolWords, ANameOrATagCannotTellOfAShortage)
{
    for (const char* line :
         {"    title           : Cannot allocate memory",
          "                    : Too many open files", "\ttitle: Cannot allocate memory",
          "Input #0, mov, from '/Cannot allocate memory':",
          "/Cannot allocate memory.mp4: No such file or directory",
          "tool: error while loading shared libraries: libx.so: cannot open shared object file: "
          "No such file or directory"})
        EXPECT_FALSE(ToolWords::tellsOfShortage(line)) << line;
    EXPECT_EQ(ToolWords::sentence(u"    title : Cannot allocate memory\nother\n"_s), std::nullopt);
}

TEST(ToolWords, AShortageIsSeenAcrossPiecesOfTheOutput)
{
    ToolWords::ShortageWatch watch;
    watch.feed("frame=1\rError while filtering: Cannot al");
    EXPECT_EQ(watch.complaint(), "");
    watch.feed("locate memory");
    watch.feed("\nError while decoding: Too many open files\n");
    EXPECT_EQ(watch.complaint(), "Error while filtering: Cannot allocate memory");
}

} // namespace
} // namespace vantroque
