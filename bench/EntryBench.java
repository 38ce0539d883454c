import java.lang.management.ManagementFactory;
import java.lang.management.ThreadMXBean;

/** Times Krpre.prebuild as entry.c times doPreProc. */
public class EntryBench {
  private static final int BATCHES = 60;
  private static final Krpre KRPRE = new Krpre();
  private static final ThreadMXBean CLOCK = ManagementFactory.getThreadMXBean();

  public static void main(String[] arguments) {
    int calls = Integer.parseInt(arguments[0]) / BATCHES;
    double best = Double.MAX_VALUE;
    for (int i = 0; i < BATCHES; ++i) batch(calls, arguments);
    for (int i = 0; i < BATCHES; ++i) best = Math.min(best, batch(calls, arguments));
    System.err.printf("%.0f%n", best);
  }

  private static double batch(int calls, String[] arguments) {
    long start = CLOCK.getCurrentThreadCpuTime();
    for (int i = 0; i < calls; ++i) {
      // The number of calls takes the place of the program's name.
      if (KRPRE.prebuild(arguments) != Krpre.OK) System.exit(1);
    }
    return (double) (CLOCK.getCurrentThreadCpuTime() - start) / calls;
  }
}
