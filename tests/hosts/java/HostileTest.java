import java.util.ArrayList;
import java.util.Arrays;
import java.util.Collections;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.concurrent.CountDownLatch;
import java.util.concurrent.atomic.AtomicInteger;
import java.util.function.Supplier;

/** What a program in Java may do wrong with the class Label ends in an exception that says what is wrong. */
public final class HostileTest {
    private static int checks;
    private static int failures;

    public static void main(String[] arguments) throws InterruptedException {
        values();
        texts();
        documents();
        copies();
        threads();
        System.out.println(checks + " checks, " + failures + " failed");
        System.exit(failures == 0 && checks > 40 ? 0 : 1);
    }

    private static void check(boolean isRight, String what) {
        ++checks;
        if (!isRight) {
            ++failures;
            System.out.println("FAILED: " + what);
        }
    }

    private static Map<String, Object> request(Object... members) {
        Map<String, Object> request = new LinkedHashMap<>();
        for (int i = 0; i < members.length; i += 2) {
            request.put((String) members[i], members[i + 1]);
        }
        return request;
    }

    /** "code of field: message", or the exception. */
    private static String outcome(Supplier<Label> make) {
        try {
            Label label = make.get();
            return "delivered " + label.data().length;
        } catch (LabelError error) {
            return error.code() + " of " + error.field() + ": " + error.getMessage();
        } catch (RuntimeException error) {
            return error.getClass().getSimpleName() + ": " + error.getMessage();
        }
    }

    private static void expect(String beginning, Supplier<Label> make) {
        String outcome = outcome(make);
        check(outcome.startsWith(beginning), outcome + ", not " + beginning);
    }

    private static void expect(String beginning, Object... members) {
        expect(beginning, () -> Label.make(request(members)));
    }

    private static void values() {
        expect("delivered", "type", "qr", "text", "hello");
        expect("delivered", "type", "qr", "text", "hello", "module", null);
        expect("bad_value of type: ", "type", null, "text", "hello");
        expect("bad_value of text: ", "type", "qr", "text", null);
        expect("bad_value of type: ");
        expect("NullPointerException", () -> Label.make((Map<String, ?>) null));
        expect("NullPointerException", () -> Label.make((String) null));
        expect("IllegalArgumentException: A field of the request has the name null.",
                () -> Label.make(Collections.singletonMap(null, "x")));
        for (Object wrong : Arrays.asList(new ArrayList<Object>(), new Object(), 'c', new int[] {1}, request())) {
            expect("IllegalArgumentException: The field \"text\" is a ", "type", "qr", "text", wrong);
            expect("IllegalArgumentException: The field \"module\" is a ", "type", "qr", "text", "A", "module", wrong);
        }
        for (Object wrong : Arrays.asList("4", true, 1.5, Double.NaN, Double.NEGATIVE_INFINITY, Float.NaN,
                Long.MIN_VALUE, new java.math.BigInteger("9".repeat(50)), new java.math.BigDecimal("1e400"))) {
            expect("bad_value of module: The field \"module\" must be a whole number from 1 to 100.",
                    "type", "qr", "text", "A", "module", wrong);
        }
        expect("delivered", "type", "qr", "text", "A", "module", (byte) 3);
        expect("delivered", "type", "code39", "text", "A", "text_scale", 1.5f);
        expect("delivered", "type", "qr", "text_base64", new byte[] {0, -1, 127});
        expect("bad_value of text: ", "type", "qr", "text", 5);
        expect("unknown_field of modul: ", "type", "qr", "text", "A", "modul", 4);
        expect("unknown_type of type: ", "type", "qx", "text", "A");
    }

    private static void texts() {
        for (String half : Arrays.asList("a\uD83D", "\uDE00", "\uDE00\uD83D", "\uD83D\uD83D\uDE00", "\uD800x")) {
            expect("bad_value of text: The field \"text\" must be a string in UTF-8; it holds half a character at ",
                    "type", "qr", "text", half);
            expect("bad_value of " + half + ": ", "type", "qr", "text", "A", half, 1);
            expect("bad_request of : ", () -> Label.make("{\"type\":\"qr\",\"text\":\"" + half + "\"}"));
        }
        Label emoji = Label.make(request("type", "qr", "text", "\uD83D\uDE00"));
        check(emoji.report().get("text").equals("\uD83D\uDE00"), "a character beyond 16 bits");
        Label zero = Label.make(request("type", "qr", "text", "A\0B\"\\\n\u001f/"));
        check(zero.report().get("text").equals("A\0B\"\\\n\u001f/"), "a text with a zero byte");
        expect("bad_text of text: Code 39 takes letters, digits, the space and - . $ / + %; replace the character U+0000 at "
                + "position 2.", "type", "code39", "text", "A\0B");
        String hundredMegabytes = "A".repeat(100_000_000);
        expect("too_long of text: ", "type", "qr", "text", hundredMegabytes);
        expect("too_long of text: ", "type", "code39", "text", hundredMegabytes);
    }

    private static void documents() {
        for (String document : Arrays.asList("", "[]", "{", "null", "{\"type\":\"qr\",}", "[".repeat(1_000_000))) {
            expect("bad_request of : ", () -> Label.make(document));
        }
        expect("delivered", () -> Label.make("{\"type\":\"qr\",\"text\":\"A\"}"));
        check(Label.types().startsWith("[{\"name\":\"code39\""), "types");
        check(Label.version().startsWith("1."), "version");
    }

    private static void copies() {
        Label label = Label.make(request("type", "qr", "text", "hello"));
        byte[] first = label.data();
        byte[] usual = first.clone();
        Arrays.fill(first, (byte) 0);
        for (int i = 0; i < 1000; ++i) {
            Label.make(request("type", "qr", "text", "other " + i));
        }
        System.gc();
        check(Arrays.equals(label.data(), usual), "a label changed");
        check(label.mediaType().equals("image/png"), "the media type");
        try {
            label.save(java.nio.file.Path.of("no such folder", "label.png"));
            check(false, "written into no folder");
        } catch (java.io.IOException error) {
            check(true, "");
        }
    }

    private static void threads() throws InterruptedException {
        byte[] usual = Label.make(request("type", "qr", "text", "hello")).data();
        Label shared = Label.make(request("type", "qr", "text", "hello"));
        AtomicInteger wrong = new AtomicInteger();
        AtomicInteger made = new AtomicInteger();
        CountDownLatch start = new CountDownLatch(1);
        List<Thread> threads = new ArrayList<>();
        for (int i = 0; i < 64; ++i) {
            Thread thread = new Thread(() -> {
                try {
                    start.await();
                    for (int label = 0; label < 50; ++label) {
                        boolean isSame = Arrays.equals(Label.make(request("type", "qr", "text", "hello")).data(), usual)
                                && Arrays.equals(shared.data(), usual);
                        boolean isRefused = outcome(() -> Label.make(request("type", "jan13", "text", "x")))
                                .startsWith("bad_text of text: ");
                        wrong.addAndGet(isSame && isRefused ? 0 : 1);
                        made.incrementAndGet();
                    }
                } catch (Throwable error) {
                    wrong.incrementAndGet();
                }
            });
            thread.start();
            threads.add(thread);
        }
        start.countDown();
        for (Thread thread : threads) {
            thread.join();
        }
        check(made.get() == 64 * 50 && wrong.get() == 0, wrong + " labels of threads are wrong, of " + made);
    }
}
