"""Documents: parts, settings, outputs, callbacks, errors and warnings."""

import copy
import gc
import io
import os
import pathlib
import pickle
import subprocess
import sys
import threading
import unittest
import warnings

import scrivalen
from scrivalen import Document, MisuseError
from support import DocumentTest

PIXEL = bytes.fromhex("89504e470d0a1a0a0000000d49484452000000010000000108000000003a7e9b550000000a49444154789c6360000000"
                      "020001e221bc330000000049454e44ae426082")


class Parts(DocumentTest):
    def test_a_part_ends_with_its_block(self):
        def write(doc):
            with doc.paragraph() as paragraph:
                paragraph.text("one ")
                paragraph.strong("two")
            doc.paragraph("three")

        self.assertEqual(self.written(write), "one **two**\n\nthree\n")

    def test_a_part_ends_by_its_function_and_only_once(self):
        def write(doc):
            quote = doc.quote()
            quote.paragraph("inside")
            quote.end()
            quote.end()
            doc.paragraph("after")

        self.assertEqual(self.written(write), "> inside\n\nafter\n")

    def test_the_end_of_a_part_ends_those_inside_it(self):
        def write(doc):
            quote = doc.quote()
            inner = quote.paragraph()
            inner.text("inside")
            quote.end()
            paragraph = doc.paragraph()
            inner.end()
            paragraph.text("still open")

        self.assertEqual(self.written(write), "> inside\n\nstill open\n")

    def test_an_exception_that_is_caught_in_the_document_ends_the_parts_that_it_passes(self):
        def write(doc):
            with self.assertRaises(KeyError):
                with doc.quote() as quote, quote.paragraph() as paragraph:
                    paragraph.text("begun")
                    raise KeyError("in the middle")
            doc.paragraph("after")

        self.assertEqual(self.written(write), "> begun\n\nafter\n")

    def test_a_part_that_is_not_the_innermost_is_refused(self):
        def write(doc):
            with doc.paragraph() as paragraph:
                with paragraph.emphasis() as span:
                    self.assertRaises(MisuseError, paragraph.text, "outer")
                    self.assertRaises(MisuseError, doc.paragraph, "outermost")
                    self.assertRaises(MisuseError, paragraph.__enter__)
                    span.text("inner")
                self.assertRaises(MisuseError, span.text, "ended")
                paragraph.text(" outer")
            whole = doc.paragraph("whole")
            self.assertRaises(MisuseError, whole.text, "more")

        self.assertEqual(self.written(write), "_inner_ outer\n\nwhole\n")

    def test_what_is_misplaced_is_refused_and_the_document_goes_on(self):
        def write(doc):
            with doc.list() as items:
                with items.item() as item:
                    item.text("text")
                    with item.link("https://example.org/") as link:
                        self.assertRaises(MisuseError, link.link, "#b")
                        link.text("link")
            with doc.quote() as quote:
                self.assertRaises(MisuseError, doc.section, "inside")
                quote.paragraph("text")

        self.assertEqual(self.written(write), "- text[link](https://example.org/)\n\n> text\n")

    def test_every_part_is_written(self):
        def write(doc):
            with doc.section("first", "s") as section:
                section.heading(2, "Heading", id="h", align="center")
                section.anchor("here")
                section.rule()
                section.page_break()
                with section.contents() as contents:
                    contents.item(1, "h", "Entry")
                with section.code(language="c") as code:
                    code.text("int x;\n")
                with section.list(ordered=True, first=3, tight=False) as items, items.item(done=False) as item:
                    item.text("text")
                    item.line_break()
                    item.link("#h", "there", "title")
                    item.sized(14, "large")
                    item.colored("navy", text="blue")
                    item.language("de", "groß")
                    item.span("deleted", "gone")
                    item.image(PIXEL, "a pixel", 12)
                    item.image(self.path("none.png"), "none")
                    item.anchor("inside")
                    item.raw("xml", "<host/>")
                    item.paragraph("block")

        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            xml = self.written(write, "xml")
        begin = xml.index("<section")
        self.assertRegex(
            xml[begin:xml.index("</section>")],
            '^<section name="first" id="s">\n<heading level="2" id="h" align="center">Heading</heading>\n'
            '<anchor id="here"/>\n<rule/>\n<page-?break/>\n'
            '<contents>\n<entry level="1" id="h">Entry</entry>\n</contents>\n'
            '<code language="c">int x;\n</code>\n<list ordered="true" first="3">\n<item task="open">text<br/>'
            '<link address="#h" title="title">there</link><sized points="14">large</sized>'
            '<colored color="#000080">blue</colored><lang tag="de">groß</lang><deleted>gone</deleted>'
            '<image [^>]*alternative="a pixel"[^>]*>([^<]*</image>)?<image alternative="none"/><anchor id="inside"/>'
            '<host/>'
            '<paragraph>block</paragraph>\n</item>\n</list>\n$')


class Arguments(DocumentTest):
    """Wrong arguments raise what Python raises, and leave the document as it was."""

    WRONG = [
        (TypeError, lambda doc: doc.paragraph(5)),
        (TypeError, lambda doc: doc.paragraph(b"bytes")),
        (TypeError, lambda doc: doc.heading("1", "text")),
        (TypeError, lambda doc: doc.heading(1.5, "text")),
        (TypeError, lambda doc: doc.heading(1, "text", id=7)),
        (MisuseError, lambda doc: doc.heading(0, "text")),
        (MisuseError, lambda doc: doc.heading(7, "text")),
        (ValueError, lambda doc: doc.heading(2**32 + 1, "text")),
        (ValueError, lambda doc: doc.paragraph("text", align="middle")),
        (ValueError, lambda doc: doc.paragraph("text", align=[])),
        (ValueError, lambda doc: doc.heading(1, id="a\0b")),
        (ValueError, lambda doc: doc.list(first=2**31)),
        (MisuseError, lambda doc: doc.list(ordered=True, first=-1)),
        (TypeError, lambda doc: doc.anchor(None)),
        (TypeError, lambda doc: doc.table("names")),
        (TypeError, lambda doc: doc.table([1])),
        (TypeError, lambda doc: doc.table(1.5)),
        (ValueError, lambda doc: doc.table(-1)),
        (MisuseError, lambda doc: doc.table(2**30)),
        (MisuseError, lambda doc: doc.table([scrivalen.Column(width=-1)])),
        (MisuseError, lambda doc: doc.table([scrivalen.Column(width=float("nan"))])),
        (MisuseError, lambda doc: doc.table([scrivalen.Column(format="no format")])),
        (ValueError, lambda doc: scrivalen.Column(decimals=16)),
        (ValueError, lambda doc: scrivalen.Column(decimals=-1)),
        (ValueError, lambda doc: scrivalen.Column(type="money")),
        (TypeError, lambda doc: doc.image(None)),
        (TypeError, lambda doc: doc.image(PIXEL, None)),
        (TypeError, lambda doc: doc.image(PIXEL, "text", "wide")),
        (MisuseError, lambda doc: doc.image(PIXEL, "text", -1)),
        (scrivalen.UnknownFormat, lambda doc: doc.raw("pdf", "markup")),
        (TypeError, lambda doc: doc.raw("html", b"markup")),
        (TypeError, lambda doc: doc.end()),
    ]

    def test_wrong_arguments_are_refused_and_nothing_is_written(self):
        def write(doc):
            doc.paragraph("before")
            for number, (error, call) in enumerate(self.WRONG):
                with self.subTest(number), self.assertRaises(error):
                    call(doc)
            doc.paragraph("after")

        self.assertEqual(self.written(write), "before\n\nafter\n")

    def test_a_misuse_is_a_runtime_error_that_says_why(self):
        with Document((io.BytesIO(), "text")) as doc:
            with self.assertRaisesRegex(RuntimeError, "level of a heading is 1 to 6") as caught:
                doc.heading(9, "text")
            self.assertIsNone(caught.exception.output)

    def test_a_lone_surrogate_is_replaced_and_counted(self):
        stream = io.BytesIO()
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            with Document((stream, "text")) as doc:
                doc.paragraph("a\ud800b")
        self.assertIn("\ufffd", stream.getvalue().decode())
        self.assertEqual([warning.code for warning in doc.warnings], [1])


class Outputs(DocumentTest):
    def test_files_are_delivered_when_the_block_ends(self):
        self.write_file("a.txt", "earlier")
        with Document(self.path("a.txt"), pathlib.Path(self.path("b.html")), (self.path("c"), "xml"), title="T") as doc:
            doc.paragraph("new")
            self.assertEqual(self.read_file("a.txt"), "earlier")
        self.assertIn("new", self.read_file("a.txt"))
        self.assertIn("<title>T</title>", self.read_file("b.html"))
        self.assertTrue(self.read_file("c").startswith("<?xml"))
        self.assertEqual([output.error for output in doc.outputs], [None, None, None])
        self.assertEqual(self.files(), ["a.txt", "b.html", "c"])

    def test_an_exception_abandons_the_document(self):
        self.write_file("a.txt", "earlier")
        for error in (ValueError, KeyboardInterrupt, SystemExit, GeneratorExit):
            with self.subTest(error.__name__):
                with self.assertRaises(error), Document(self.path("a.txt"), self.path("b.html")) as doc:
                    with doc.table() as table:
                        table.row("half")
                        raise error
                self.assertRaises(MisuseError, doc.paragraph, "late")
                self.assertEqual(self.files(), ["a.txt"])
                self.assertEqual(self.read_file("a.txt"), "earlier")

    def test_a_generator_that_raises_abandons_the_document(self):
        def generate():
            yield "half", 1
            raise LookupError("the database is gone")

        self.write_file("a.txt", "earlier")
        with self.assertRaisesRegex(LookupError, "gone"), Document(self.path("a.txt"), self.path("b.html")) as doc:
            with doc.table() as table:
                table.rows(generate())
        self.assertEqual(self.files(), ["a.txt"])
        self.assertEqual(self.read_file("a.txt"), "earlier")

    def test_a_document_that_nobody_closes_is_abandoned(self):
        self.write_file("a.txt", "earlier")
        doc = Document(self.path("a.txt"))
        part = doc.paragraph()
        del doc
        part.text("the part keeps the document")
        with self.assertWarnsRegex(ResourceWarning, "a.txt' was not closed"):
            del part
            gc.collect()
        self.assertEqual(self.files(), ["a.txt"])
        self.assertEqual(self.read_file("a.txt"), "earlier")

    def test_a_program_that_ends_abandons_its_documents_in_silence(self):
        program = f"import scrivalen\ndoc = scrivalen.Document({self.path('a.txt')!r})\npart = doc.paragraph()"
        package = os.path.dirname(os.path.dirname(scrivalen.__file__))
        done = subprocess.run([sys.executable, "-B", "-c", program], env={**os.environ, "PYTHONPATH": package},
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=True)
        self.assertEqual(done.stdout, b"")
        self.assertEqual(self.files(), [])

    def test_a_document_can_be_closed_and_abandoned_again(self):
        doc = Document(self.path("a.txt"))
        doc.paragraph("text")
        doc.close()
        doc.close()
        doc.abandon()
        self.assertEqual(self.read_file("a.txt"), "text\n")
        other = Document(self.path("b.txt"))
        other.abandon()
        other.close()
        self.assertEqual(self.files(), ["a.txt"])

    def test_a_document_is_refused_after_its_end(self):
        with Document(self.path("a.txt")) as doc:
            part = doc.paragraph()
        for call in (lambda: doc.paragraph("late"), lambda: part.text("late"), lambda: doc.set("title", "late"),
                     lambda: doc.add_file(self.path("b.txt")), lambda: doc.set_progress(None), doc.open, doc.__enter__,
                     lambda: doc.add_stream(io.BytesIO(), "text"), doc.section, doc.table):
            self.assertRaises(MisuseError, call)
        part.end()

    def test_set_up_comes_before_the_content(self):
        with Document(self.path("a.txt")) as doc:
            doc.open()
            self.assertRaises(MisuseError, doc.open)
            self.assertRaises(MisuseError, doc.set, "title", "late")
            self.assertRaises(MisuseError, doc.add_file, self.path("b.txt"))
            self.assertRaises(MisuseError, doc.set_progress, print)

    def test_a_document_needs_an_output(self):
        doc = Document()
        self.assertRaises(MisuseError, doc.open)
        self.assertRaises(MisuseError, doc.paragraph, "text")
        self.assertRaises(MisuseError, doc.close)
        doc.add_file(self.path("a.txt"))
        doc.paragraph("text")
        doc.close()
        self.assertEqual(self.read_file("a.txt"), "text\n")

    def test_wrong_outputs_are_refused(self):
        for error, output in ((scrivalen.UnknownFormat, "report.unknown"), (scrivalen.UnknownFormat, ("a.txt", "word")),
                              (TypeError, 5), (TypeError, io.BytesIO()), (TypeError, (5, "text")), (TypeError, None),
                              (TypeError, ("a.txt",)), (ValueError, "a\0.txt"), (MisuseError, ("", "text")),
                              (TypeError, ("a.txt", 5))):
            with self.subTest(output=output), self.assertRaises(error):
                Document(output)

    def test_an_output_that_cannot_be_created_is_raised_by_the_first_content(self):
        path = self.path("missing/a.txt")
        with self.assertRaises(scrivalen.FileError) as caught, Document(self.path("b.txt"), path) as doc:
            doc.paragraph("text")
        self.assertEqual(caught.exception.output, path)
        self.assertIn(path, caught.exception.reason)
        self.assertIsInstance(caught.exception, OSError)
        self.assertEqual(str(caught.exception), caught.exception.reason)
        self.assertEqual(self.files(), [])

    def test_a_document_goes_on_without_an_output_that_cannot_be_created(self):
        path = self.path("missing/a.txt")
        doc = Document(self.path("b.txt"), path)
        self.assertRaises(scrivalen.FileError, doc.open)
        doc.paragraph("text")
        self.assertRaises(scrivalen.FileError, doc.close)
        self.assertEqual(self.read_file("b.txt"), "text\n")
        self.assertEqual([bool(output.error) for output in doc.outputs], [False, True])
        self.assertEqual([output.name for output in doc.outputs], [self.path("b.txt"), path])

    @unittest.skipIf(not os.path.exists("/dev/full"), "needs a full disk")
    def test_a_full_disk_names_its_output(self):
        with self.assertRaises(scrivalen.FileError) as caught, Document(("/dev/full", "text")) as doc:
            doc.paragraph("text")
        self.assertEqual(caught.exception.output, "/dev/full")

    def test_settings_are_given_by_their_names(self):
        stream = io.BytesIO()
        with Document((stream, "html"), title="T & T", language="de", landscape=True, margins="10mm") as doc:
            doc.set("text.width", 40)
            doc.set("clock", "2026-01-31 23:59:59")
            doc.set("property:state", "draft")
        page = stream.getvalue().decode()
        self.assertIn("<title>T &amp; T</title>", page)
        self.assertIn('lang="de"', page)
        for error, name, value in ((scrivalen.UnknownSetting, "colour", "x"), (scrivalen.UnknownSetting, "paper", "A"),
                                   (TypeError, "title", None), (TypeError, 5, "x"), (ValueError, "title", "a\0b")):
            with self.subTest(name=name), self.assertRaises(error):
                Document().set(name, value)
        self.assertRaises(scrivalen.UnknownSetting, Document, colour="x")

    def test_an_error_can_be_sent_to_another_process(self):
        error = pickle.loads(pickle.dumps(scrivalen.FileError("why", "a.txt")))
        self.assertEqual((type(error), error.reason, error.output), (scrivalen.FileError, "why", "a.txt"))

    def test_a_document_is_neither_copied_nor_pickled(self):
        with Document(self.path("a.txt")) as doc:
            self.assertRaises(TypeError, pickle.dumps, doc)
            self.assertRaises(TypeError, copy.deepcopy, doc)

    @unittest.skipIf(not hasattr(os, "fork"), "needs fork")
    def test_a_forked_process_leaves_the_document_to_its_parent(self):
        doc = Document(self.path("a.txt"))
        doc.paragraph("text")
        child = os.fork()
        if child == 0:
            try:
                doc.close()
            except MisuseError:
                doc.abandon()
                os._exit(7)
            os._exit(1)
        self.assertEqual(os.waitpid(child, 0)[1] >> 8, 7)
        doc.close()
        self.assertEqual(self.read_file("a.txt"), "text\n")


class FailingStream:
    def __init__(self, error):
        self.error = error
        self.calls = 0

    def write(self, data):
        self.calls += 1
        raise self.error


class Callbacks(DocumentTest):
    def test_a_stream_gets_all_bytes(self):
        class Slow(io.RawIOBase):
            taken = b""

            def writable(self):
                return True

            def write(self, data):
                self.taken += bytes(data[:1000])
                return len(data[:1000])

        slow, plain = Slow(), io.BytesIO()
        with Document((slow, "text"), (plain, "text")) as doc:
            for _ in range(100):
                doc.paragraph("text " * 300)
        self.assertEqual(slow.taken, plain.getvalue())
        self.assertGreater(len(slow.taken), 100000)

    def test_what_a_stream_raises_is_raised_again(self):
        error = KeyError("no room")
        stream, other = FailingStream(error), io.BytesIO()
        doc = Document((stream, "text"), (other, "text"))
        doc.paragraph("text")
        with self.assertRaises(KeyError) as caught:
            doc.close()
        self.assertIs(caught.exception, error)
        self.assertEqual(stream.calls, 1)
        self.assertEqual(other.getvalue(), b"text\n")
        self.assertEqual([bool(output.error) for output in doc.outputs], [True, False])

    def test_what_a_stream_raises_at_the_end_of_a_part_is_raised_there(self):
        doc = Document((FailingStream(KeyError("no room")), "text"))
        with self.assertRaises(KeyError):
            with doc.table() as table:
                table.rows(["x" * 400] for _ in range(400))
        doc.abandon()

    def test_a_stream_that_takes_no_bytes_or_lies_has_failed(self):
        class Liar:
            def __init__(self, taken):
                self.taken = taken

            def write(self, data):
                return self.taken

        for taken in (0, -1, 10**6):
            with self.assertRaises(OSError), Document((Liar(taken), "text")) as doc:
                doc.paragraph("text")

    def test_a_pipe_that_takes_no_more_bytes_now_has_failed(self):
        reading, writing = os.pipe()
        self.addCleanup(os.close, reading)
        os.set_blocking(writing, False)
        with io.FileIO(writing, "wb") as pipe:
            with self.assertRaises(BlockingIOError), Document((pipe, "text")) as doc:
                for _ in range(3000):
                    doc.paragraph("text " * 20)

    def test_a_text_stream_is_refused_by_its_own_error(self):
        with self.assertRaises(TypeError), Document((io.StringIO(), "text")) as doc:
            doc.paragraph("text")

    def test_progress_learns_rows_and_bytes(self):
        seen = []
        doc = Document((io.BytesIO(), "html"))
        doc.set_progress(lambda rows, size: seen.append((rows, size)))
        with doc.table() as table:
            table.rows(["x" * 100] for _ in range(3000))
        doc.close()
        self.assertEqual(seen, sorted(seen))
        self.assertEqual(seen[-1][0], 3000)
        self.assertGreater(seen[-1][1], 300000)

    def test_progress_cancels(self):
        doc = Document(self.path("a.html"))
        doc.set_progress(lambda rows, size: size < 100000)
        with self.assertRaises(scrivalen.Cancelled), doc:
            while True:
                doc.paragraph("x" * 10000)
        self.assertEqual(self.files(), [])

    def test_what_progress_raises_is_raised_again(self):
        doc = Document(self.path("a.html"))
        doc.set_progress(lambda rows, size: 1 // 0)
        with self.assertRaises(ZeroDivisionError), doc:
            doc.paragraph("text")
        self.assertEqual(self.files(), [])

    def test_a_callback_must_not_use_its_document(self):
        caught = []

        def misuse(rows, size):
            for call in (lambda: doc.paragraph("inside"), doc.close, doc.abandon, part.end):
                try:
                    call()
                except MisuseError as error:
                    caught.append(error)

        stream = io.BytesIO()
        doc = Document((stream, "text"))
        doc.set_progress(misuse)
        part = doc.paragraph()
        part.text("text")
        doc.close()
        self.assertEqual(stream.getvalue(), b"text\n")
        self.assertEqual(len(caught) % 4, 0)
        self.assertGreater(len(caught), 0)

    def test_another_thread_is_refused_during_a_long_call(self):
        caught = []

        class Meddler:
            def write(self, data):
                thread = threading.Thread(target=meddle)
                thread.start()
                thread.join()

        def meddle():
            try:
                doc.paragraph("from another thread")
            except MisuseError as error:
                caught.append(error)

        with Document((Meddler(), "text")) as doc:
            doc.paragraph("text")
        self.assertEqual(len(caught), 1)

    def test_documents_are_written_in_threads(self):
        def write(number):
            with Document(self.path(f"{number}.html")) as doc:
                with doc.table() as table:
                    table.columns(list(range(20000)), [f"thread {number}"] * 20000)

        threads = [threading.Thread(target=write, args=(number,)) for number in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(self.files(), ["0.html", "1.html", "2.html", "3.html"])
        self.assertEqual(self.read_file("2.html").count("thread 2</td>"), 20000)


class Warnings(DocumentTest):
    def test_warnings_are_given_to_python(self):
        with self.assertWarns(scrivalen.DocumentWarning) as caught:
            with Document(self.path("a.md")) as doc:
                with doc.paragraph() as paragraph:
                    paragraph.colored("red", text="red")
        self.assertEqual(caught.filename, __file__)
        self.assertEqual(len(doc.warnings), 1)
        warning = doc.warnings[0]
        self.assertEqual((warning.output, warning.count, warning.code), (self.path("a.md"), 1, 4))
        self.assertEqual(str(warning), f"{self.path('a.md')}: {warning.message} (1)")

    def test_a_warning_that_is_an_error_comes_after_the_delivery(self):
        with warnings.catch_warnings():
            warnings.simplefilter("error", scrivalen.DocumentWarning)
            doc = Document(self.path("a.md"))
            with doc.paragraph() as paragraph:
                paragraph.colored("red", text="red")
            self.assertRaises(scrivalen.DocumentWarning, doc.close)
        self.assertEqual(self.read_file("a.md"), "red\n")

    def test_a_document_without_warnings_gives_none(self):
        with warnings.catch_warnings():
            warnings.simplefilter("error")
            with Document(self.path("a.md")) as doc:
                doc.paragraph("text")
        self.assertEqual(doc.warnings, [])


class Package(unittest.TestCase):
    def test_it_names_formats_and_version(self):
        self.assertLessEqual({"text", "html", "xml", "rtf", "markdown"}, set(scrivalen.formats()))
        self.assertRegex(scrivalen.__version__, r"^\d+\.\d+\.\d+$")

    def test_it_exports_what_it_says(self):
        for name in scrivalen.__all__:
            self.assertTrue(hasattr(scrivalen, name), name)
