# The PDF writer: a picture page of the receipt's size in under 5 ms, and a 100-page text document.
zw_bench(zw_pdf_bench SOURCES PdfBench.cpp LIBS zw_export)
