// Writes the document of document.c through P/Invoke.
//
//   document.exe [FOLDER]
//
// The library is found as "scrivalen": libscrivalen.so on Linux, Scrivalen.dll on Windows.
using System;
using System.IO;
using System.Runtime.InteropServices;
using System.Text;

static class Native {
  const string Library = "scrivalen";
  public static readonly UIntPtr Nul = UIntPtr.Size == 8 ? new UIntPtr(ulong.MaxValue) : new UIntPtr(uint.MaxValue);
  public const int Center = 2, Strong = 1, TypeText = 1, TypeNumber = 2, TypeDate = 4, TypeBoolean = 6;

  [StructLayout(LayoutKind.Sequential)]
  public struct ParagraphStyle {
    public UIntPtr Size;
    public int Align;
  }

  [StructLayout(LayoutKind.Sequential)]
  public struct Column {
    public UIntPtr Size;
    public IntPtr Name;
    public int Type, Align;
    public double Width;
    public int Decimals;
    public IntPtr Format;
  }

  [StructLayout(LayoutKind.Sequential)]
  public struct CellStyle {
    public UIntPtr Size;
    public int Header, Align, Span;
    public IntPtr Color, Background;
  }

  [StructLayout(LayoutKind.Sequential)]
  public struct ColumnData {
    public UIntPtr Size;
    public int Type;
    public IntPtr Values, Offsets, Validity;
    public UIntPtr Offset;
  }

  [StructLayout(LayoutKind.Sequential)]
  public struct Warning {
    public UIntPtr Size, Output;
    public int Code;
    public ulong Count;
    public IntPtr Message;
  }

  [DllImport(Library)] public static extern IntPtr scrivalen_format(UIntPtr index);
  [DllImport(Library)] public static extern IntPtr scrivalen_new();
  [DllImport(Library)] public static extern void scrivalen_free(IntPtr document);
  [DllImport(Library)] public static extern IntPtr scrivalen_error(IntPtr document);
  [DllImport(Library)] public static extern int scrivalen_add_file(IntPtr document, byte[] path, byte[] format);
  [DllImport(Library)] public static extern int scrivalen_set(IntPtr document, byte[] name, byte[] value);
  [DllImport(Library)] public static extern int scrivalen_begin_section(IntPtr document, byte[] name, byte[] id);
  [DllImport(Library)] public static extern int scrivalen_begin_heading(IntPtr document, int level, byte[] id, IntPtr style);
  [DllImport(Library)] public static extern int scrivalen_begin_paragraph(IntPtr document, ref ParagraphStyle style);
  [DllImport(Library)] public static extern int scrivalen_begin_quote(IntPtr document);
  [DllImport(Library)] public static extern int scrivalen_begin_list(IntPtr document, int ordered, int first, int tight);
  [DllImport(Library)] public static extern int scrivalen_begin_item(IntPtr document, int task);
  [DllImport(Library)] public static extern int scrivalen_begin_code(IntPtr document, byte[] language);
  [DllImport(Library)] public static extern int scrivalen_begin_table(IntPtr document, Column[] columns, UIntPtr count, byte[] name);
  [DllImport(Library)] public static extern int scrivalen_begin_row(IntPtr document, int header);
  [DllImport(Library)] public static extern int scrivalen_begin_cell(IntPtr document, ref CellStyle style);
  [DllImport(Library)] public static extern int scrivalen_begin_span(IntPtr document, int kind);
  [DllImport(Library)] public static extern int scrivalen_begin_colored(IntPtr document, byte[] color, byte[] background);
  [DllImport(Library)] public static extern int scrivalen_begin_sized(IntPtr document, double points);
  [DllImport(Library)] public static extern int scrivalen_begin_link(IntPtr document, byte[] address, byte[] title);
  [DllImport(Library)] public static extern int scrivalen_begin_language(IntPtr document, byte[] tag);
  [DllImport(Library)] public static extern int scrivalen_begin_contents(IntPtr document);
  [DllImport(Library)] public static extern int scrivalen_contents_item(IntPtr document, int level, byte[] id, byte[] text, UIntPtr size);
  [DllImport(Library)] public static extern int scrivalen_end(IntPtr document);
  [DllImport(Library)] public static extern int scrivalen_text(IntPtr document, byte[] text, UIntPtr size);
  [DllImport(Library)] public static extern int scrivalen_line_break(IntPtr document);
  [DllImport(Library)] public static extern int scrivalen_page_break(IntPtr document);
  [DllImport(Library)] public static extern int scrivalen_rule(IntPtr document);
  [DllImport(Library)] public static extern int scrivalen_anchor(IntPtr document, byte[] id);
  [DllImport(Library)] public static extern int scrivalen_raw(IntPtr document, byte[] format, byte[] markup, UIntPtr size);
  [DllImport(Library)] public static extern int scrivalen_heading(IntPtr document, int level, byte[] text, UIntPtr size);
  [DllImport(Library)] public static extern int scrivalen_paragraph(IntPtr document, byte[] text, UIntPtr size);
  [DllImport(Library)] public static extern int scrivalen_cell(IntPtr document, byte[] text, UIntPtr size);
  [DllImport(Library)] public static extern int scrivalen_cell_number(IntPtr document, double value);
  [DllImport(Library)] public static extern int scrivalen_cell_integer(IntPtr document, long value);
  [DllImport(Library)] public static extern int scrivalen_cell_date(IntPtr document, int days);
  [DllImport(Library)] public static extern int scrivalen_cell_time(IntPtr document, long seconds);
  [DllImport(Library)] public static extern int scrivalen_cell_boolean(IntPtr document, int value);
  [DllImport(Library)] public static extern int scrivalen_rows(IntPtr document, ColumnData[] columns, UIntPtr count, UIntPtr rows);
  [DllImport(Library)] public static extern int scrivalen_close(IntPtr document);
  [DllImport(Library)] public static extern int scrivalen_next_warning(IntPtr document, ref Warning warning);

  public static string TextAt(IntPtr text) {
    int size = 0;
    while (Marshal.ReadByte(text, size) != 0) {
      ++size;
    }
    var bytes = new byte[size];
    Marshal.Copy(text, bytes, 0, size);
    return Encoding.UTF8.GetString(bytes);
  }

  public static byte[] Utf8(string text) { return Encoding.UTF8.GetBytes(text + "\0"); }

  public static UIntPtr SizeOf<T>() { return new UIntPtr((uint)Marshal.SizeOf(typeof(T))); }
}

class Program : IDisposable {
  readonly IntPtr document = Native.scrivalen_new();

  public void Dispose() { Native.scrivalen_free(document); }

  void Check(int status) {
    if (status != 0) {
      throw new IOException(Native.TextAt(Native.scrivalen_error(document)));
    }
  }

  // Arrays stay where they are while the program runs.
  static IntPtr Pinned(object values) { return GCHandle.Alloc(values, GCHandleType.Pinned).AddrOfPinnedObject(); }

  static IntPtr PinnedText(string text) { return Pinned(Native.Utf8(text)); }

  void Text(string text) { Check(Native.scrivalen_text(document, Native.Utf8(text), Native.Nul)); }

  void End() { Check(Native.scrivalen_end(document)); }

  void Cell(string text) { Check(Native.scrivalen_cell(document, Native.Utf8(text), Native.Nul)); }

  void WriteText() {
    var centered = new Native.ParagraphStyle { Size = Native.SizeOf<Native.ParagraphStyle>(), Align = Native.Center };
    Check(Native.scrivalen_heading(document, 1, Native.Utf8("Fleet"), Native.Nul));
    Check(Native.scrivalen_begin_contents(document));
    Check(Native.scrivalen_contents_item(document, 1, Native.Utf8("costs"), Native.Utf8("Costs"), Native.Nul));
    End();
    Check(Native.scrivalen_begin_paragraph(document, ref centered));
    Text("Cars in ");
    Check(Native.scrivalen_begin_span(document, Native.Strong));
    Text("M\u00FCnchen");
    End();
    Check(Native.scrivalen_line_break(document));
    Check(Native.scrivalen_begin_colored(document, Native.Utf8("navy"), Native.Utf8("#FFFFE0")));
    Check(Native.scrivalen_begin_sized(document, 14));
    Check(Native.scrivalen_begin_language(document, Native.Utf8("de")));
    Text("Fuhrpark");
    End();
    End();
    End();
    Check(Native.scrivalen_begin_link(document, Native.Utf8("https://example.org/?a=1&b=2"), Native.Utf8("all cars")));
    Text(" and <more>");
    End();
    Check(Native.scrivalen_anchor(document, Native.Utf8("cars")));
    Check(Native.scrivalen_raw(document, Native.Utf8("html"), Native.Utf8("<wbr>"), Native.Nul));
    End();
    Check(Native.scrivalen_rule(document));
  }

  void WriteItem(string text, int task) {
    Check(Native.scrivalen_begin_item(document, task));
    Text(text);
    End();
  }

  void WriteBlocks() {
    Check(Native.scrivalen_begin_quote(document));
    Check(Native.scrivalen_paragraph(document, Native.Utf8("Every car has a driver."), Native.Nul));
    End();
    Check(Native.scrivalen_begin_list(document, 1, 3, 1));
    WriteItem("third", 0);
    WriteItem("done", 2);
    End();
    Check(Native.scrivalen_begin_code(document, Native.Utf8("c")));
    Text("if (a < b)\n\treturn a;\n");
    End();
    Check(Native.scrivalen_page_break(document));
  }

  void WriteCells() {
    var wide = new Native.CellStyle {
      Size = Native.SizeOf<Native.CellStyle>(), Header = 1, Align = Native.Center, Span = 2,
      Color = PinnedText("white"), Background = PinnedText("#204060")
    };
    Check(Native.scrivalen_begin_row(document, 1));
    Check(Native.scrivalen_begin_cell(document, ref wide));
    Text("Car");
    End();
    Cell("Since");
    Cell("Used");
    End();
    Check(Native.scrivalen_begin_row(document, 0));
    Cell("bus");
    Check(Native.scrivalen_cell_number(document, 0.125));
    Check(Native.scrivalen_cell_date(document, 20000));
    Check(Native.scrivalen_cell_boolean(document, 1));
    End();
    Check(Native.scrivalen_begin_row(document, 0));
    Cell("van");
    Check(Native.scrivalen_cell_integer(document, -42));
    Check(Native.scrivalen_cell_time(document, 86399));
    Cell("");
    End();
  }

  void WriteRows() {
    var columns = new Native.ColumnData[4];
    for (int i = 0; i < columns.Length; ++i) {
      columns[i].Size = Native.SizeOf<Native.ColumnData>();
    }
    columns[0].Type = Native.TypeText;
    columns[0].Values = PinnedText("carlorry");
    columns[0].Offsets = Pinned(new long[] { 0, 3, 8 });
    columns[1].Type = Native.TypeNumber;
    columns[1].Values = Pinned(new[] { 1234.5, 2 });
    columns[2].Type = Native.TypeDate;
    columns[2].Values = Pinned(new[] { 19000, 0 });
    columns[2].Validity = Pinned(new byte[] { 1 });
    columns[3].Type = Native.TypeBoolean;
    columns[3].Values = Pinned(new byte[] { 2 });
    Check(Native.scrivalen_rows(document, columns, new UIntPtr(4), new UIntPtr(2)));
  }

  void WriteTable() {
    var columns = new Native.Column[4];
    for (int i = 0; i < columns.Length; ++i) {
      columns[i].Size = Native.SizeOf<Native.Column>();
    }
    columns[0].Name = PinnedText("car");
    columns[1].Name = PinnedText("cost");
    columns[1].Type = Native.TypeNumber;
    columns[1].Decimals = 2;
    columns[2].Align = Native.Center;
    Check(Native.scrivalen_begin_heading(document, 2, Native.Utf8("costs"), IntPtr.Zero));
    Text("Costs");
    End();
    Check(Native.scrivalen_begin_table(document, columns, new UIntPtr(4), Native.Utf8("costs")));
    WriteCells();
    WriteRows();
    End();
  }

  void AddOutputs(string folder) {
    IntPtr name;
    for (uint i = 0; (name = Native.scrivalen_format(new UIntPtr(i))) != IntPtr.Zero; ++i) {
      string format = Native.TextAt(name);
      if (format == "chm") {
        continue;  // it needs a help compiler
      }
      string path = Path.Combine(folder, "report." + format);
      Check(Native.scrivalen_add_file(document, Native.Utf8(path), Native.Utf8(format)));
    }
  }

  void Write(string folder) {
    AddOutputs(folder);
    Check(Native.scrivalen_set(document, Native.Utf8("title"), Native.Utf8("Fleet")));
    Check(Native.scrivalen_set(document, Native.Utf8("clock"), Native.Utf8("2026-01-31 23:59:59")));
    Check(Native.scrivalen_begin_section(document, Native.Utf8("Fleet"), Native.Utf8("fleet")));
    WriteText();
    WriteBlocks();
    WriteTable();
    End();
    Check(Native.scrivalen_close(document));
    var warning = new Native.Warning { Size = Native.SizeOf<Native.Warning>() };
    while (Native.scrivalen_next_warning(document, ref warning) != 0) {
      Console.WriteLine("{0} ({1})", Native.TextAt(warning.Message), warning.Count);
    }
  }

  static int Main(string[] arguments) {
    try {
      using (var program = new Program()) {
        program.Write(arguments.Length > 0 ? arguments[0] : ".");
      }
      return 0;
    } catch (IOException failure) {
      Console.Error.WriteLine("document: {0}", failure.Message);
      return 1;
    }
  }
}
