"""Cells, rows and columns from the values of Python."""

import array
import ctypes
import datetime
import decimal
import enum
import io
import types
import warnings

import scrivalen
from scrivalen import MisuseError, Values
from support import DocumentTest


class Cells(DocumentTest):
    def test_values_are_written_by_their_types(self):
        self.assertEqual(self.row("text", 4.5, 42, -7, True, False, None, datetime.date(2024, 2, 29),
                                  datetime.datetime(1969, 12, 31, 23, 59, 59, 999999), ""),
                         ["text", "4.5", "42", "-7", "true", "false", "", "2024-02-29", "1969-12-31 23:59:59", ""])

    def test_the_first_and_last_dates_are_written(self):
        self.assertEqual(self.row(datetime.date.min, datetime.date.max, datetime.datetime.max),
                         ["0001-01-01", "9999-12-31", "9999-12-31 23:59:59"])

    def test_a_time_with_a_zone_is_in_utc(self):
        zone = datetime.timezone(datetime.timedelta(hours=-3))
        self.assertEqual(self.row(datetime.datetime(2024, 1, 1, 22, 30, tzinfo=zone)), ["2024-01-02 01:30:00"])

    def test_an_int_beyond_64_bits_is_a_text(self):
        self.assertEqual(self.row(2**63 - 1, -2**63, 2**63, -2**63 - 1, 10**40),
                         ["9223372036854775807", "-9223372036854775808", "9223372036854775808", "-9223372036854775809",
                          "1" + "0" * 40])

    def test_a_decimal_keeps_its_digits(self):
        self.assertEqual(self.row(decimal.Decimal("1.10"), decimal.Decimal("1E+3"), decimal.Decimal("-0.00000001"),
                                  decimal.Decimal("12345678901234567890.5"), decimal.Decimal("1E+999999")),
                         ["1.10", "1000", "-0.00000001", "12345678901234567890.5", "1E+999999"])

    def test_what_is_not_finite_is_empty_and_counted(self):
        stream = io.BytesIO()
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            with scrivalen.Document((stream, "xml")) as doc:
                with doc.table() as table:
                    table.row(float("nan"), float("inf"), decimal.Decimal("NaN"), decimal.Decimal("-Infinity"))
        self.assertIn("<cell></cell>" * 4, stream.getvalue().decode())
        self.assertEqual([warning.count for warning in doc.warnings], [4])

    def test_derived_types_are_written_as_their_bases(self):
        class Text(str):
            pass

        class Level(enum.IntEnum):
            HIGH = 3

        class Real:
            def __float__(self):
                return 2.5

        class Whole:
            def __index__(self):
                return 2**64

        class Stamp(datetime.datetime):
            pass

        class NotATime(datetime.datetime):
            def __eq__(self, other):
                return False

        self.assertEqual(self.row(Text("text"), Level.HIGH, Real(), Whole(), Stamp(2024, 1, 1), NotATime(2024, 1, 1)),
                         ["text", "3", "2.5", str(2**64), "2024-01-01 00:00:00", ""])

    def test_single_values_of_arrays_keep_their_types(self):
        class Scalar:
            """As arrays of a numeric library give it: only seconds are plain times."""

            def __init__(self, kind, plain, seconds=None):
                self.dtype = types.SimpleNamespace(kind=kind)
                self.plain, self.seconds = plain, seconds

            def item(self):
                return self.plain

            def astype(self, unit):
                assert unit == "datetime64[s]"
                return Scalar("M", self.seconds)

            def __bool__(self):
                return self.plain

            def __index__(self):
                return 7

        noon = datetime.datetime(2024, 2, 29, 12)
        self.assertEqual(self.row(Scalar("b", True), Scalar("b", False), Scalar("i", 7), Scalar("M", noon.date()),
                                  Scalar("M", noon, noon), Scalar("M", 10**18, noon), Scalar("M", None)),
                         ["true", "false", "7", "2024-02-29", "2024-02-29 12:00:00", "2024-02-29 12:00:00", ""])
        for error, value in ((TypeError, Scalar("c", 1j)), (TypeError, Scalar("m", 5)), (ValueError, Scalar("M", 5, 5))):
            self.assertEqual(self.rows(lambda table: self.assertRaises(error, table.row, value)), [])

    def test_a_value_of_another_type_leaves_no_half_row(self):
        def write(table):
            for value in (b"bytes", object(), [1], {"a": 1}, 1j, datetime.timedelta(1), datetime.time(1)):
                with self.assertRaisesRegex(TypeError, type(value).__name__):
                    table.row("before", value)
            table.row("whole")

        self.assertEqual(self.rows(write), [["whole"]])

    def test_what_a_value_raises_is_raised(self):
        class Broken:
            def __float__(self):
                raise ZeroDivisionError

        self.assertEqual(self.rows(lambda table: self.assertRaises(ZeroDivisionError, table.row, 1, Broken())), [])

    def test_cells_have_styles_and_spans(self):
        def write(table):
            with table.row() as row:
                row.cell(1, align="center")
                with row.cell(span=2) as cell:
                    cell.text("text ")
                    cell.strong("strong")
                self.assertRaises(MisuseError, row.cell, 1, color="no colour")
                self.assertRaises(ValueError, row.cell, 1, span=2**40)
                self.assertRaises(MisuseError, row.cell, 1, span=-1)
                self.assertRaises(TypeError, row.cell, 1, 2)
                self.assertRaises(TypeError, row.cell, 1, color=5)
            table.row(2, 3, 4)

        self.assertEqual(self.rows(write), [["1", "text <strong>strong</strong>"], ["2", "3", "4"]])

    def test_header_rows_come_first(self):
        def write(doc):
            with doc.table(["a", scrivalen.Column("b", decimals=2)]) as table:
                table.header("A", "B")
                table.row("x", 1.0)

        self.assertEqual(self.written(write), "| A |    B |\n| --- | ---: |\n| x | 1.00 |\n".replace("| A ", "| A   ")
                         .replace("| x ", "| x   "))


class Rows(DocumentTest):
    def test_rows_are_taken_from_iterables(self):
        self.assertEqual(self.rows(lambda table: table.rows([("a", 1), ["b", None], iter(["c", True])])),
                         [["a", "1"], ["b", ""], ["c", "true"]])

    def test_what_a_generator_raises_comes_after_the_rows_before_it(self):
        def generate():
            yield 1, 2
            yield (3 // number for number in (1, 0))

        self.assertEqual(self.rows(lambda table: self.assertRaises(ZeroDivisionError, table.rows, generate())),
                         [["1", "2"]])

    def test_what_are_no_rows_is_refused(self):
        def write(table):
            for data in (5, None, ["text"], [b"bytes"], [{"a": 1}], "text", [5]):
                with self.subTest(data=data), self.assertRaises(TypeError):
                    table.rows(data)

        self.assertEqual(self.rows(write), [])

    def test_a_generator_that_uses_its_document_is_refused(self):
        def write(doc):
            with doc.table() as table:
                def generate():
                    yield (1,)
                    table.row()
                    yield (2,)

                self.assertRaises(MisuseError, table.rows, generate())

        self.written(write)

    def test_a_wrong_value_comes_after_the_rows_before_it(self):
        def write(table):
            with self.assertRaisesRegex(TypeError, "bytes"):
                table.rows([(1, "a"), (2, "b"), (3, b"c"), (4, "d")])

        self.assertEqual(self.rows(write), [["1", "a"], ["2", "b"]])

    def test_many_rows_are_written_in_their_order(self):
        rows = [(number, None if number % 3 else "text", number % 1100 == 0 or number * 0.5) for number in range(2500)]

        def write_one_by_one(table):
            for row in rows:
                table.row(*row)

        self.assertEqual(self.rows(lambda table: table.rows(iter(rows))), self.rows(write_one_by_one))

    def test_ragged_rows_are_written_as_they_are(self):
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            self.assertEqual(self.rows(lambda table: table.rows([(1,), (), (2, 3)])), [["1", ""], ["", ""], ["2", "3"]])


class Columns(DocumentTest):
    def columns(self, *columns):
        return self.rows(lambda table: table.columns(*columns))

    def test_sequences_are_written_by_the_types_of_their_values(self):
        rows = [("a", 1.5, 1, True, datetime.date(2024, 2, 29), datetime.datetime(2024, 1, 1), decimal.Decimal("1.0")),
                ("", None, None, None, None, None, None),
                (None, -2.0, -2**63, False, datetime.date(1, 1, 1), datetime.datetime(1, 1, 1), decimal.Decimal("2"))]
        self.assertEqual(self.columns(*zip(*rows)), self.rows(lambda table: table.rows(rows)))
        self.assertEqual(self.columns(*zip(*rows))[2],
                         ["", "-2", "-9223372036854775808", "false", "0001-01-01", "0001-01-01 00:00:00", "2"])

    def test_many_rows_of_bits_stay_in_their_order(self):
        bits = [number % 3 == 0 for number in range(1000)]
        numbers = [number if number % 7 else None for number in range(1000)]
        self.assertEqual(self.columns(bits, numbers),
                         [["true" if bit else "false", "" if number is None else str(number)]
                          for bit, number in zip(bits, numbers)])

    def test_values_of_several_types_are_written_too(self):
        self.assertEqual(self.columns(["a", 1, None], [1, 2**70, 2.5], (float("1"), 1, True)),
                         [["a", "1", "1"], ["1", str(2**70), "1"], ["", "2.5", "true"]])

    def test_buffers_of_every_number_are_written(self):
        for code in "bBhHiIlLqQ":
            values = array.array(code, [0, 1, 127])
            self.assertEqual(self.columns(values, memoryview(values)), [["0", "0"], ["1", "1"], ["127", "127"]], code)
        for code in "fd":
            self.assertEqual(self.columns(array.array(code, [0.5, -2])), [["0.5"], ["-2"]])
        self.assertEqual(self.columns((ctypes.c_int64 * 2)(1, -1), (ctypes.c_double * 2)(1.5, 2)),
                         [["1", "1.5"], ["-1", "2"]])
        self.assertEqual(self.columns((ctypes.c_bool * 2)(True, False)), [["true"], ["false"]])

    def test_integers_beyond_64_bits_become_texts(self):
        self.assertEqual(self.columns(array.array("Q", [1, 2**64 - 1])), [["1"], [str(2**64 - 1)]])

    def test_buffers_of_the_other_byte_order_and_with_gaps_are_copied(self):
        long, short = ctypes.c_int64.__ctype_be__ * 2, ctypes.c_int32.__ctype_be__ * 2
        self.assertEqual(self.columns(long(1, -2), short(3, 4)), [["1", "3"], ["-2", "4"]])
        numbers = memoryview(array.array("d", [0, 1, 2, 3]))
        self.assertEqual(self.columns(numbers[::2], numbers[::-2]), [["0", "3"], ["2", "1"]])

    def test_masked_cells_are_empty(self):
        class Masked(array.array):
            mask = (False, True)

            def tolist(self):
                return [self[0], None]

        self.assertEqual(self.columns(Masked("q", [1, 2])), [["1"], [""]])

    def test_a_buffer_with_more_dimensions_is_refused(self):
        square = memoryview(bytes(16)).cast("B", (4, 4))
        self.assertEqual(self.rows(lambda table: self.assertRaises(TypeError, table.columns, square)), [])

    def test_a_mapping_has_columns(self):
        self.assertEqual(self.rows(lambda table: table.rows({"a": [1, 2], "b": array.array("d", [0.5, 1])})),
                         [["1", "0.5"], ["2", "1"]])

    def test_values_have_a_type_that_is_said(self):
        texts = Values("teaübung".encode(), "text", offsets=array.array("q", [0, 3, 3, 9]), validity=b"\x05")
        days = Values(array.array("i", [19782, -1, 0]), "date")
        times = Values(array.array("q", [0, 86399, -1]), "time")
        bits = Values(b"\x02", "boolean", rows=3)
        prices = Values(array.array("f", [0.5, 1, 2]), "number", validity=bytearray(b"\x03"))
        counts = Values(array.array("h", [1, 2, 3]), "integer")
        self.assertEqual(self.columns(texts, days, times, bits, prices, counts),
                         [["tea", "2024-02-29", "1970-01-01 00:00:00", "false", "0.5", "1"],
                          ["", "1969-12-31", "1970-01-01 23:59:59", "true", "1", "2"],
                          ["übung", "1970-01-01", "1969-12-31 23:59:59", "false", "", "3"]])

    def test_wrong_values_are_refused_when_they_are_made(self):
        numbers = array.array("q", [0, 1])
        for error, call in ((ValueError, lambda: Values(numbers, "money")),
                            (ValueError, lambda: Values(numbers, "auto")),
                            (TypeError, lambda: Values(b"text", "text")),
                            (ValueError, lambda: Values(b"text", "text", offsets=array.array("q", [0, 5]))),
                            (ValueError, lambda: Values(b"text", "text", offsets=array.array("q", [-1, 4]))),
                            (ValueError, lambda: Values(b"text", "text", offsets=array.array("q"))),
                            (TypeError, lambda: Values(b"\0", "boolean")),
                            (ValueError, lambda: Values(b"\0", "boolean", rows=9)),
                            (ValueError, lambda: Values(b"\0", "boolean", rows=-1)),
                            (ValueError, lambda: Values(numbers, "integer", validity=b"")),
                            (ValueError, lambda: Values(numbers, "integer", rows=3)),
                            (TypeError, lambda: Values([1, 2], "integer")),
                            (TypeError, lambda: Values(array.array("d", [1.5]), "integer")),
                            (OverflowError, lambda: Values(array.array("q", [2**40]), "date"))):
            with self.assertRaises(error):
                call()

    def test_offsets_that_descend_are_refused_before_a_row_is_written(self):
        texts = Values(b"text", "text", offsets=array.array("q", [0, 4, 2, 4]))
        self.assertEqual(self.rows(lambda table: self.assertRaises(MisuseError, table.columns, texts)), [])

    def test_columns_of_different_lengths_are_refused(self):
        def write(table):
            self.assertRaises(ValueError, table.columns, [1, 2], [1])
            self.assertRaises(ValueError, table.rows, {"a": [1], "b": []})
            for column in ("text", b"bytes", 5, None, {"a": 1}):
                self.assertRaises(TypeError, table.columns, column)

        self.assertEqual(self.rows(write), [])

    def test_no_columns_and_no_rows_write_nothing(self):
        self.assertEqual(self.columns(), [])
        self.assertEqual(self.columns([], array.array("d"), Values(b"", "text", offsets=array.array("q", [0]))), [])
        self.assertEqual(self.rows(lambda table: table.rows([])), [])
        self.assertEqual(self.rows(lambda table: table.rows({})), [])

    def test_a_buffer_cannot_shrink_while_it_is_used(self):
        numbers = array.array("q", [1, 2, 3])
        values = Values(numbers, "integer")
        self.assertRaises(BufferError, numbers.pop)
        self.assertEqual(self.columns(values), [["1"], ["2"], ["3"]])

    def test_columns_and_rows_write_the_same(self):
        count = 1200
        names = [f"name {number}" for number in range(count)]
        numbers = [number * 0.25 for number in range(count)]
        self.assertEqual(self.columns(names, numbers), self.rows(lambda table: table.rows(zip(names, numbers))))

    def test_columns_are_refused_outside_their_table(self):
        def write(doc):
            with doc.table() as table, table.row():
                self.assertRaises(MisuseError, table.columns, [1])
            self.assertRaises(MisuseError, table.columns, [1])

        self.written(write)
