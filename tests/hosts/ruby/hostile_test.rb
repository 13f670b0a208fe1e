# frozen_string_literal: true

# What a program in Ruby may do wrong with the class Label ends in an exception that says what is wrong.
#   hostile_test.rb DIRECTORY_OF_LABEL_RB

require File.join(File.expand_path(ARGV.fetch(0)), 'label')

$checks = 0
$failures = 0

def check(right, what)
  $checks += 1
  return if right

  $failures += 1
  puts "FAILED: #{what}"
end

# 'code of field: message', or the exception.
def outcome
  "delivered #{yield.data.bytesize}"
rescue LabelError => e
  "#{e.code} of #{e.field}: #{e.message}"
rescue StandardError => e
  "#{e.class}: #{e.message}"
end

def expect(beginning, request = nil, &block)
  result = outcome(&(block || -> { Label.make(request) }))
  check(result.b.start_with?(beginning.b), "#{result.inspect}, not #{beginning.inspect}")
end

# Values.
expect('delivered', { type: 'qr', text: 'hello' })
expect('delivered', { 'type' => 'qr', 'text' => 'hello', module: nil })
expect('bad_value of type: ', { type: nil, text: 'hello' })
expect('bad_value of text: ', { type: 'qr', text: nil })
expect('bad_value of type: ', {})
expect('TypeError: A request is a Hash') { Label.make(nil) }
expect('TypeError: A request is a Hash') { Label.make('qr') }
expect('TypeError: JSON is a String') { Label.make_from_json(nil) }
expect('TypeError: The name of a field is a NilClass') { Label.make({ nil => 1 }) }
expect('TypeError: The name of a field is a Integer') { Label.make({ 5 => 1 }) }
[[], { a: 1 }, Object.new, :symbol, 1r, 1i, ->(x) { x }].each do |wrong|
  expect('TypeError: The field "text" is a ', { type: 'qr', text: wrong })
  expect('TypeError: The field "module" is a ', { type: 'qr', text: 'A', module: wrong })
end
['4', true, 1.5, Float::NAN, -Float::INFINITY, -(2**63), 10**50, 1e300].each do |wrong|
  expect('bad_value of module: The field "module" must be a whole number from 1 to 100.',
         { type: 'qr', text: 'A', module: wrong })
end
expect('delivered', { type: 'code39', text: 'A', text_scale: 1.5 })
expect('delivered', { type: 'qr', text: 'A', module: 4.0 })
expect('delivered', { type: 'qr', text_base64: ["\x00\xFF"].pack('m0') })
expect('bad_value of text: ', { type: 'qr', text: 5 })
expect('unknown_field of modul: ', { type: 'qr', text: 'A', modul: 4 })
expect('unknown_type of type: ', { type: 'qx', text: 'A' })

# Texts. A surrogate in UTF-8 is none.
["a\xED\xA0\x80", "\xED\xB8\x80", "\xC3", "\xFF", "\xFF".b, "\xD8\x00".dup.force_encoding('UTF-16BE')].each do |broken|
  expect('bad_value of text: The field "text" must be a string in UTF-8.', { type: 'qr', text: broken })
  next unless broken.encoding == Encoding::UTF_8

  expect("bad_value of #{broken}: ", { type: 'qr', text: 'A', broken => 1 })
  expect('bad_request of : ') { Label.make_from_json("{\"type\":\"qr\",\"text\":\"#{broken}\"}") }
end
["A\0B\"\\\n\x1F/", "\u{1F600}\u6F22", '<&>\'#{x}', "\u00E9".encode('ISO-8859-1'), 'é'.b, 'é'.encode('UTF-16LE')].each do |text|
  wanted = text.encoding == Encoding::BINARY ? text.dup.force_encoding('UTF-8') : text.encode('UTF-8')
  check(Label.make({ type: 'qr', text: text }).report['text'] == wanted, "the text #{text.inspect}")
end
expect('bad_text of text: Code 39 takes letters, digits, the space and - . $ / + %; replace the character U+0000 at ' \
       'position 2.', { type: 'code39', text: "A\0B" })
expect('too_long of text: ', { type: 'qr', text: 'A' * 100_000_000 })

# Documents.
['', '[]', '{', 'null', '{"type":"qr",}', '[' * 1_000_000, "{\"type\":\"qr\"}\0"].each do |document|
  expect('bad_request of : ') { Label.make_from_json(document) }
end
check(Label.types.size == 19, 'types')
check(Label.version.start_with?('1.'), 'version')

# What a label holds is its own, and stays.
label = Label.make(type: 'qr', text: 'hello')
usual = label.data.dup
1000.times { |i| Label.make(type: 'qr', text: "other #{i}") }
GC.start
check(label.data == usual && label.media_type == 'image/png' && usual.start_with?("\x89PNG".b), 'a label changed')
check(begin
  label.data << 'x'
rescue FrozenError
  'refused'
end == 'refused', 'the data was changed')
check(begin
  label.save('no such folder/label.png')
rescue Errno::ENOENT
  'refused'
end == 'refused', 'written into no folder')
check(begin
  Label.new('', '', {})
rescue NoMethodError
  'refused'
end == 'refused', 'a label without the library')

# Threads.
threads = Array.new(64) do
  Thread.new do
    Array.new(20) do
      same = Label.make(type: 'qr', text: 'hello').data == usual && label.data == usual
      same && outcome { Label.make(type: 'jan13', text: 'x') }.start_with?('bad_text of text: ')
    end
  end
end
results = threads.flat_map(&:value)
check(results.size == 64 * 20 && results.all?, 'labels of threads')

puts "#{$checks} checks, #{$failures} failed"
exit($failures.zero? && $checks > 40)
