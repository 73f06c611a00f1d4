"""Rows from Arrow's C interfaces, with producers made by hand."""

import array
import ctypes
import errno
from ctypes import CFUNCTYPE, POINTER, Structure, c_char_p, c_int, c_int64, c_void_p

import scrivalen
from support import DocumentTest


class Schema(Structure):
    pass


class Array(Structure):
    pass


class Stream(Structure):
    pass


ReleaseSchema = CFUNCTYPE(None, POINTER(Schema))
ReleaseArray = CFUNCTYPE(None, POINTER(Array))
ReleaseStream = CFUNCTYPE(None, POINTER(Stream))
GetSchema = CFUNCTYPE(c_int, POINTER(Stream), POINTER(Schema))
GetNext = CFUNCTYPE(c_int, POINTER(Stream), POINTER(Array))
GetError = CFUNCTYPE(c_void_p, POINTER(Stream))

Schema._fields_ = [("format", c_char_p), ("name", c_char_p), ("metadata", c_char_p), ("flags", c_int64),
                   ("n_children", c_int64), ("children", POINTER(POINTER(Schema))), ("dictionary", POINTER(Schema)),
                   ("release", ReleaseSchema), ("private_data", c_void_p)]
Array._fields_ = [("length", c_int64), ("null_count", c_int64), ("offset", c_int64), ("n_buffers", c_int64),
                  ("n_children", c_int64), ("buffers", POINTER(c_void_p)), ("children", POINTER(POINTER(Array))),
                  ("dictionary", POINTER(Array)), ("release", ReleaseArray), ("private_data", c_void_p)]
Stream._fields_ = [("get_schema", GetSchema), ("get_next", GetNext), ("get_last_error", GetError),
                   ("release", ReleaseStream), ("private_data", c_void_p)]

new_capsule = ctypes.pythonapi.PyCapsule_New
new_capsule.restype = ctypes.py_object
new_capsule.argtypes = [c_void_p, c_char_p, c_void_p]


class Batch:
    """Two columns, of int64 and of text, as a producer holds them."""

    def __init__(self, numbers, texts, types=(b"l", b"u")):
        self.released = []
        data = "".join(texts).encode()
        ends = array.array("i", [0])
        for text in texts:
            ends.append(ends[-1] + len(text.encode()))
        self.kept = [array.array("q", numbers), ends, ctypes.create_string_buffer(data, len(data) + 1)]
        self.release_schema = ReleaseSchema(lambda schema: self.release(schema, "schema"))
        self.release_array = ReleaseArray(lambda array_: self.release(array_, "array"))
        self.schema = self.make_schema(types)
        self.array = self.make_array(len(numbers))

    def release(self, struct, name):
        self.released.append(name)
        struct.contents.release = type(struct.contents.release)()

    def make_schema(self, types):
        self.fields = [Schema(format=type_, name=b"field", flags=2, release=self.release_schema) for type_ in types]
        self.field_pointers = (POINTER(Schema) * len(types))(*[ctypes.pointer(field) for field in self.fields])
        return Schema(format=b"+s", name=b"", n_children=len(types), children=self.field_pointers,
                      release=self.release_schema)

    def make_array(self, length):
        numbers, ends, texts = self.kept
        buffers = [(c_void_p * 2)(None, numbers.buffer_info()[0]),
                   (c_void_p * 3)(None, ends.buffer_info()[0], ctypes.addressof(texts)), (c_void_p * 1)(None)]
        self.buffers = buffers
        self.columns = [Array(length=length, n_buffers=len(used), buffers=used, release=self.release_array)
                        for used in buffers[:2]]
        self.column_pointers = (POINTER(Array) * 2)(*[ctypes.pointer(column) for column in self.columns])
        return Array(length=length, n_buffers=1, buffers=buffers[2], n_children=2, children=self.column_pointers,
                     release=self.release_array)

    def __arrow_c_array__(self, requested_schema=None):
        return (new_capsule(ctypes.addressof(self.schema), b"arrow_schema", None),
                new_capsule(ctypes.addressof(self.array), b"arrow_array", None))


class Batches:
    """A stream of batches, which fails at its end if it is to."""

    def __init__(self, *batches, error=None):
        self.batches = list(batches)
        self.error = ctypes.create_string_buffer(error.encode()) if error else None
        self.released = 0
        self.schema = Batch([], [])
        self.stream = Stream(GetSchema(self.get_schema), GetNext(self.get_next), GetError(self.get_error),
                             ReleaseStream(self.release))

    def get_schema(self, _stream, schema):
        schema[0] = self.schema.schema
        return 0

    def get_next(self, _stream, array_):
        if self.batches:
            array_[0] = self.batches.pop(0).array
        elif self.error:
            return errno.EIO
        else:
            array_[0] = Array()
        return 0

    def get_error(self, _stream):
        return ctypes.addressof(self.error) if self.error else None

    def release(self, stream):
        self.released += 1
        stream.contents.release = ReleaseStream()

    def __arrow_c_stream__(self, requested_schema=None):
        return new_capsule(ctypes.addressof(self.stream), b"arrow_array_stream", None)


class Arrow(DocumentTest):
    def test_a_batch_is_written_and_released(self):
        batch = Batch([1, -2, 2**63 - 1], ["tea", "", "süß"])
        self.assertEqual(self.rows(lambda table: table.rows(batch)),
                         [["1", "tea"], ["-2", ""], [str(2**63 - 1), "süß"]])
        self.assertIn("array", batch.released)
        self.assertNotIn("schema", batch.released)

    def test_a_batch_is_released_also_when_it_is_refused(self):
        batch = Batch([1], ["a"], types=(b"l", b"+l"))

        def write(table):
            with self.assertRaises(scrivalen.MisuseError):
                table.rows(batch)
            table.row("after")

        self.assertEqual(self.rows(write), [["after"]])
        self.assertIn("array", batch.released)

    def test_a_batch_that_was_released_is_refused(self):
        batch = Batch([1], ["a"])

        def write(table):
            table.rows(batch)
            self.assertRaises(scrivalen.MisuseError, table.rows, batch)

        self.assertEqual(self.rows(write), [["1", "a"]])

    def test_all_batches_of_a_stream_are_written(self):
        batches = Batches(Batch([1], ["a"]), Batch([], []), Batch([2, 3], ["b", "c"]))
        self.assertEqual(self.rows(lambda table: table.rows(batches)), [["1", "a"], ["2", "b"], ["3", "c"]])
        self.assertEqual(batches.released, 1)

    def test_a_stream_comes_before_an_array(self):
        class Both(Batches):
            def __arrow_c_array__(self):
                raise AssertionError("the stream was there")

        self.assertEqual(self.rows(lambda table: table.rows(Both(Batch([1], ["a"])))), [["1", "a"]])

    def test_a_stream_that_fails_keeps_the_rows_before(self):
        batches = Batches(Batch([1], ["a"]), error="the source went away")

        def write(table):
            with self.assertRaisesRegex(scrivalen.InputError, "the source went away"):
                table.rows(batches)

        self.assertEqual(self.rows(write), [["1", "a"]])
        self.assertEqual(batches.released, 1)

    def test_what_the_producer_raises_is_raised(self):
        class Broken:
            def __arrow_c_stream__(self, requested_schema=None):
                raise ZeroDivisionError

        self.assertEqual(self.rows(lambda table: self.assertRaises(ZeroDivisionError, table.rows, Broken())), [])

    def test_what_are_no_capsules_is_refused(self):
        class Wrong:
            def __init__(self, result):
                self.result = result

        class WrongStream(Wrong):
            def __arrow_c_stream__(self, requested_schema=None):
                return self.result

        class WrongArray(Wrong):
            def __arrow_c_array__(self, requested_schema=None):
                return self.result

        batch = Batch([1], ["a"])
        schema, array_ = batch.__arrow_c_array__()

        def write(table):
            for wrong in (WrongStream(None), WrongStream(5), WrongStream(schema), WrongArray(None),
                          WrongArray((schema,)), WrongArray((array_, schema)), WrongArray((None, None)),
                          WrongArray([schema, array_])):
                with self.assertRaises(TypeError):
                    table.rows(wrong)

        self.assertEqual(self.rows(write), [])
        self.assertEqual(batch.released, [])
