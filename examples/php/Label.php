<?php
// Labels from PHP 8.1 or later, through FFI: Label::make(['type' => 'qr', 'text' => 'hello'])->save('label.png').

declare(strict_types=1);

// A label that was refused: getCode() is one of the words under "Errors" in barcode_label.h, $field the field that is to
// blame ('' where none is), getMessage() one sentence.
final class LabelError extends InvalidArgumentException
{
    public function __construct(string $code, public readonly string $field, string $message)
    {
        parent::__construct($message);
        $this->code = $code;
    }
}

// A label: a picture that scans, and what there is to say of it. It holds copies of what the library made: there is nothing
// to close.
final class Label
{
    private const FUNCTIONS = '
        typedef struct BarcodeLabel BarcodeLabel;
        BarcodeLabel* barcode_label_make(const char* request, size_t length);
        int barcode_label_ok(const BarcodeLabel* label);
        const unsigned char* barcode_label_data(const BarcodeLabel* label, size_t* length);
        const char* barcode_label_media_type(const BarcodeLabel* label);
        const char* barcode_label_report(const BarcodeLabel* label);
        void barcode_label_free(BarcodeLabel* label);
        const char* barcode_label_types(void);
        const char* barcode_label_version(void);';

    // data: the bytes of the picture. mediaType: 'image/png', 'image/svg+xml' or 'application/pdf'. report: as
    // docs/labels.md describes it.
    private function __construct(
        public readonly string $data,
        public readonly string $mediaType,
        public readonly array $report,
    ) {
    }

    // Makes a label. The request has fields of docs/labels.md: strings in UTF-8, numbers, booleans, null for a field that is
    // absent. Throws LabelError when the library refuses it, TypeError for a value of another type, FFI\Exception where PHP
    // has no FFI or does not find the library.
    public static function make(array $request): self
    {
        $members = [];
        foreach ($request as $field => $value) {
            $field = (string) $field;
            $members[] = self::jsonString($field, $field) . ':' . self::json($field, $value);
        }
        return self::makeFromJson('{' . implode(',', $members) . '}');
    }

    // The same from JSON as it stands.
    public static function makeFromJson(string $json): self
    {
        $library = self::library();
        $label = $library->barcode_label_make($json, strlen($json));
        if ($label === null) {
            throw new RuntimeException('There is no memory for a label');
        }
        try {
            $report = json_decode($library->barcode_label_report($label), true, 512, JSON_THROW_ON_ERROR);
            if ($library->barcode_label_ok($label) !== 1) {
                $error = $report['error'];
                throw new LabelError($error['code'], $error['field'], $error['message']);
            }
            $length = $library->new('size_t');
            $data = $library->barcode_label_data($label, FFI::addr($length));
            return new self(FFI::string($data, $length->cdata), $library->barcode_label_media_type($label), $report);
        } finally {
            $library->barcode_label_free($label);
        }
    }

    // The symbologies with their fields.
    public static function types(): array
    {
        return json_decode(self::library()->barcode_label_types(), true, 512, JSON_THROW_ON_ERROR);
    }

    // The version of the library, '1.0.0'.
    public static function version(): string
    {
        return self::library()->barcode_label_version();
    }

    // Writes the picture to a file, which is made or replaced.
    public function save(string $path): void
    {
        if (@file_put_contents($path, $this->data) !== strlen($this->data)) {
            throw new RuntimeException("Cannot write $path: " . (error_get_last()['message'] ?? 'not all was written'));
        }
    }

    private static function library(): FFI
    {
        static $library = null;
        return $library ??= FFI::cdef(self::FUNCTIONS, 'libbarcode_label.so.1');
    }

    private static function json(string $field, mixed $value): string
    {
        return match (true) {
            $value === null => 'null',
            is_bool($value) => $value ? 'true' : 'false',
            is_int($value) => (string) $value,
            // What JSON has no number for is sent as one that is too large for every field.
            is_float($value) => is_finite($value) ? var_export($value, true) : '1e999',
            is_string($value) => self::jsonString($field, $value),
            default => throw new TypeError(sprintf(
                'The field "%s" is a %s; it must be a string, a number, a boolean or null.',
                $field,
                get_debug_type($value),
            )),
        };
    }

    private static function jsonString(string $field, string $value): string
    {
        static $escapes = null;
        if ($escapes === null) {
            $escapes = ['"' => '\\"', '\\' => '\\\\'];
            for ($byte = 0; $byte < 0x20; ++$byte) {
                $escapes[chr($byte)] = sprintf('\\u%04x', $byte);
            }
        }
        if (preg_match('//u', $value) !== 1) {
            throw new LabelError('bad_value', $field, "The field \"$field\" must be a string in UTF-8.");
        }
        return '"' . strtr($value, $escapes) . '"';
    }
}
