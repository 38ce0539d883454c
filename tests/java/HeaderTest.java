import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.RandomAccessFile;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.nio.charset.StandardCharsets;
import java.util.Arrays;
import java.util.Collections;
import java.util.zip.DeflaterOutputStream;

/** Texts of headers as the host sees them. */
public class HeaderTest {
  private static final Krpre KRPRE = new Krpre();
  private static final String LETTERS = "#define A \"\u00e1\u00e7\u20ac\ud83d\ude00\u0000z\"";

  public static void main(String[] unused) throws Exception {
    plainHeaders();
    packedHeaders();
    namesOfAllKinds();
    whatCannotBeReadIsEmpty();
    damagedPackedHeaderEndsTheVirtualMachine();
  }

  private static void plainHeaders() throws IOException {
    Check.equal("#define A 1\r\n", KRPRE.getCH(Check.write("a.ch", "#define A 1")), "one line");
    Check.equal("\r\n", KRPRE.getCH(Check.write("empty.ch", "")), "no line");
    Check.equal("#z\r\n", KRPRE.getCH(Check.write("short.ch", "#z")), "less than a tag");
    Check.equal(LETTERS + "\r\n", KRPRE.getCH(Check.write("utf8.ch", LETTERS)), "UTF-8");
    byte[] windows = "\u00e1\u00e7\u20ac\u0178\r\n\u00e9".getBytes("windows-1252");
    Check.equal("\u00e1\u00e7\u20ac\u0178\r\n\u00e9\r\n", KRPRE.getCH(Check.write("w.ch", windows)), "Windows-1252");
  }

  private static void packedHeaders() throws IOException {
    for (String tag : new String[] {"#zip", "#ZIP", "#zIp"}) {
      Check.equal("#define A 1\r\n", KRPRE.getCH(Check.write("p.ch", packed(tag, "#define A 1"))), tag);
    }
    String accents = "\u00e1\ud83d\ude00";
    Check.equal(accents + "\r\n", KRPRE.getCH(Check.write("p.ch", packed("#zip", accents))), "UTF-8");
    Check.equal("a\r\n", KRPRE.getCH(Check.write("p.ch", packed("#zip", "a\0b"))), "ends at a zero byte");
  }

  private static void namesOfAllKinds() throws IOException {
    for (String name : new String[] {"acentua\u00e7\u00e3o.ch", "\u4e2d\u6587 \u20ac.ch", "\ud83d\ude00.ch"}) {
      Check.equal("x\r\n", KRPRE.getCH(Check.write(name, "x")), name);
    }
  }

  private static void whatCannotBeReadIsEmpty() throws IOException {
    String file = Check.write("there.ch", "x");
    byte[] good = packed("#zip", "#define A 1");
    Check.write("cut.ch", Arrays.copyOf(good, good.length - 1));
    Check.write("header.ch", Arrays.copyOf(good, 11));
    good[7] = 0x7f;
    Check.write("long.ch", good);
    try (RandomAccessFile large = new RandomAccessFile(Check.path("large.ch"), "rw")) {
      large.setLength((16 << 20) - 1);
    }
    String[] names = {null, "", "\0", file + "\0", "/dev/zero", "/", Check.FOLDER.toString(), "\ud800", Check.path("none.ch"),
        Check.path("cut.ch"), Check.path("header.ch"), Check.path("long.ch"), Check.path("large.ch")};
    for (String name : names) Check.equal("", KRPRE.getCH(name), "text of " + name);
  }

  private static void damagedPackedHeaderEndsTheVirtualMachine() throws Exception {
    byte[] bytes = packed("#zip", "#define A 1");
    bytes[20] ^= 0x55;
    String name = Check.write("damaged.ch", bytes);
    Check.Ended ended = Check.runVirtualMachine("C.UTF-8", Collections.emptyList(), "HeaderTest$Reading", name);
    Check.equal(128 + 6, ended.status, "killed by the assertion: " + ended.output);
    Check.that(ended.output.contains("korelpre/korelprecls at line 1452"), ended.output);
    Check.that(ended.output.contains("damaged.ch"), ended.output);
    Check.that(!ended.output.contains("survived"), ended.output);
  }

  /** Reads the header that it is given, in a virtual machine of its own. */
  public static class Reading {
    public static void main(String[] names) {
      new Krpre().getCH(names[0]);
      System.out.println("survived");
    }
  }

  private static byte[] packed(String tag, String text) throws IOException {
    byte[] plain = text.getBytes(StandardCharsets.UTF_8);
    ByteArrayOutputStream data = new ByteArrayOutputStream();
    try (DeflaterOutputStream deflater = new DeflaterOutputStream(data)) {
      deflater.write(plain);
    }
    return ByteBuffer.allocate(12 + data.size())
        .order(ByteOrder.LITTLE_ENDIAN)
        .put(tag.getBytes(StandardCharsets.US_ASCII))
        .putInt(plain.length)
        .putInt(data.size())
        .put(data.toByteArray())
        .array();
  }
}
