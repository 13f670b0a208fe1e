import java.math.BigDecimal;
import java.math.BigInteger;
import java.util.ArrayList;
import java.util.Base64;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;

/** As much JSON as requests and reports take. */
final class Json {
    private final String text;
    private int at;

    private Json(String text) {
        this.text = text;
    }

    /** A request as an object; what no request can hold is refused with the name of its field. */
    static String write(Map<String, ?> request) {
        StringBuilder json = new StringBuilder("{");
        for (Map.Entry<String, ?> member : request.entrySet()) {
            String field = member.getKey();
            if (field == null) {
                throw new IllegalArgumentException("A field of the request has the name null.");
            }
            if (json.length() > 1) {
                json.append(',');
            }
            writeString(json, field, field);
            json.append(':');
            writeValue(json, field, member.getValue());
        }
        return json.append('}').toString();
    }

    private static void writeValue(StringBuilder json, String field, Object value) {
        if (value == null || value instanceof Boolean || value instanceof Byte || value instanceof Short
                || value instanceof Integer || value instanceof Long || value instanceof BigInteger
                || value instanceof BigDecimal) {
            json.append(value);
        } else if (value instanceof Float || value instanceof Double) {
            // What JSON has no number for is sent as one that is too large for every field.
            json.append(Double.isFinite(((Number) value).doubleValue()) ? value : "1e999");
        } else if (value instanceof byte[]) {
            writeString(json, field, Base64.getEncoder().encodeToString((byte[]) value));
        } else if (value instanceof String) {
            writeString(json, field, (String) value);
        } else {
            throw new IllegalArgumentException("The field \"" + field + "\" is a " + value.getClass().getName()
                    + "; it must be a string, a number, a boolean, bytes or null.");
        }
    }

    private static void writeString(StringBuilder json, String field, String value) {
        json.append('"');
        for (int i = 0; i < value.length(); ++i) {
            char unit = value.charAt(i);
            if (unit < 0x20 || unit == '"' || unit == '\\') {
                json.append(String.format("\\u%04x", (int) unit));
                continue;
            }
            if (Character.isSurrogate(unit)) {
                boolean isPair = Character.isHighSurrogate(unit) && i + 1 < value.length()
                        && Character.isLowSurrogate(value.charAt(i + 1));
                if (!isPair) {
                    throw new LabelError("bad_value", field, "The field \"" + field
                            + "\" must be a string in UTF-8; it holds half a character at position " + (i + 1) + ".");
                }
                json.append(unit);
                unit = value.charAt(++i);
            }
            json.append(unit);
        }
        json.append('"');
    }

    /** A document as Map, List, String, BigDecimal, Boolean and null. */
    static Object read(String text) {
        Json json = new Json(text);
        Object value = json.value();
        json.space();
        if (json.at != text.length()) {
            throw json.broken();
        }
        return value;
    }

    private IllegalStateException broken() {
        return new IllegalStateException("Something is wrong with the JSON at " + at + ": " + text);
    }

    private void space() {
        while (at < text.length() && " \t\r\n".indexOf(text.charAt(at)) >= 0) {
            ++at;
        }
    }

    private char next() {
        if (at >= text.length()) {
            throw broken();
        }
        return text.charAt(at++);
    }

    private boolean take(char wanted) {
        space();
        if (at < text.length() && text.charAt(at) == wanted) {
            ++at;
            return true;
        }
        return false;
    }

    private void demand(char wanted) {
        if (!take(wanted)) {
            throw broken();
        }
    }

    private Object value() {
        if (take('{')) {
            Map<String, Object> members = new LinkedHashMap<>();
            while (!take('}')) {
                if (!members.isEmpty()) {
                    demand(',');
                }
                demand('"');
                String name = string();
                demand(':');
                members.put(name, value());
            }
            return members;
        }
        if (take('[')) {
            List<Object> elements = new ArrayList<>();
            while (!take(']')) {
                if (!elements.isEmpty()) {
                    demand(',');
                }
                elements.add(value());
            }
            return elements;
        }
        return take('"') ? string() : word();
    }

    private String string() {
        StringBuilder value = new StringBuilder();
        for (char unit = next(); unit != '"'; unit = next()) {
            value.append(unit == '\\' ? escaped(next()) : unit);
        }
        return value.toString();
    }

    private char escaped(char kind) {
        if (kind == 'u') {
            int end = Math.min(at + 4, text.length());
            char unit = (char) Integer.parseInt(text.substring(at, end), 16);
            at = end;
            return unit;
        }
        int place = "\"\\/bfnrt".indexOf(kind);
        if (place < 0) {
            throw broken();
        }
        return "\"\\/\b\f\n\r\t".charAt(place);
    }

    private Object word() {
        int begin = at;
        while (at < text.length() && ",]} \t\r\n".indexOf(text.charAt(at)) < 0) {
            ++at;
        }
        String word = text.substring(begin, at);
        switch (word) {
            case "true":
                return Boolean.TRUE;
            case "false":
                return Boolean.FALSE;
            case "null":
                return null;
            default:
                return new BigDecimal(word);
        }
    }
}
